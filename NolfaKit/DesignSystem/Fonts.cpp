#include "DesignSystem/Fonts.h"

#include "Platform/Bundle.h"

#include <QFontDatabase>
#include <QString>

namespace nolfa::Fonts {

void registerIfNeeded(const Bundle &bundle)
{
    static bool isDone = false;
    if (isDone)
        return;
    isDone = true;
    std::vector<std::filesystem::path> files = bundle.resources("ttf", "Fonts");
    if (files.empty())
        files = bundle.resources("ttf");
    for (const std::filesystem::path &file : files)
        QFontDatabase::addApplicationFont(QString::fromStdString(file.string()));
}

} // namespace nolfa::Fonts
