#pragma once

#include "Nolfa/App/AppSettings.h"
#include "Nolfa/Features/Settings/AboutInfo.h"

#include <qqml.h>

namespace nolfa {

// Makes models, which know nothing of Qt Quick, known to it.

struct AppSettingsType {
    Q_GADGET
    QML_FOREIGN(nolfa::AppSettings)
    QML_NAMED_ELEMENT(AppSettings)
    QML_UNCREATABLE("The application has one.")
};

struct AboutInfoType {
    Q_GADGET
    QML_FOREIGN(nolfa::AboutInfo)
    QML_NAMED_ELEMENT(AboutInfo)
};

} // namespace nolfa
