#pragma once

#include "Nolfa/Features/Expectations/ExpectationsModel.h"

#include <qqml.h>

namespace nolfa {

/// Makes the model, which knows nothing of Qt Quick, known to it.
struct ExpectationsModelType {
    Q_GADGET
    QML_FOREIGN(nolfa::ExpectationsModel)
    QML_NAMED_ELEMENT(ExpectationsModel)
};

} // namespace nolfa
