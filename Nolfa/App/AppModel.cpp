#include "Nolfa/App/AppModel.h"

#include "Engine/DocumentFormat.h"
#include "Localization/NolfaL10n.h"

#include <QSettings>
#include <algorithm>
#include <utility>

namespace nolfa {

namespace {

struct ToolRow {
    const char *rawValue;
    const char *english;
    const char *french;
    QSize leastContentSize;
};

/// In the order of the tools.
const ToolRow &rowOf(AppModel::Tool tool)
{
    static const std::array<ToolRow, AppModel::allTools.size()> rows{{
        {"convert", "Convert", "Conversion", {720, 420}},
        {"compare", "Compare", "Comparaison", {900, 560}},
        {"watermark", "Watermark", "Filigrane", {820, 540}},
    }};
    return rows.at(static_cast<std::size_t>(tool));
}

QString text(const char *english, const char *french)
{
    return QString::fromStdString(T(english, french));
}

} // namespace

QString AppModel::rawValue(Tool tool)
{
    return QString::fromLatin1(rowOf(tool).rawValue);
}

QString AppModel::title(Tool tool)
{
    return text(rowOf(tool).english, rowOf(tool).french);
}

QString AppModel::shortcut(Tool tool)
{
    return QStringLiteral("Ctrl+%1").arg(static_cast<int>(tool) + 1);
}

QSize AppModel::leastContentSize(Tool tool)
{
    return rowOf(tool).leastContentSize;
}

AppModel::AppModel()
    : AppModel(AppSettings::standardDefaults(), ConvertViewModel::standardSurroundings())
{
}

AppModel::AppModel(std::unique_ptr<QSettings> defaults, ConvertViewModel::Surroundings surroundings)
    : m_settings(std::move(defaults))
    , m_convert(&m_settings, std::move(surroundings))
{
    connect(&m_settings, &AppSettings::languageChanged, this, &AppModel::textsChanged);
}

void AppModel::setTool(Tool tool)
{
    if (std::exchange(m_tool, tool) != tool)
        emit toolChanged();
}

void AppModel::setShowExpectations(bool show)
{
    if (std::exchange(m_showExpectations, show) != show)
        emit showExpectationsChanged();
}

void AppModel::chooseFiles()
{
    emit openPanelRequested();
}

void AppModel::filesChosen(const QList<QUrl> &urls)
{
    setTool(Tool::convert);
    m_convert.add(urls);
}

QVariantList AppModel::toolList()
{
    QVariantList list;
    for (const Tool tool : allTools) {
        list.append(QVariantMap{{"tool", QVariant::fromValue(tool)}, {"rawValue", rawValue(tool)},
            {"title", title(tool)}, {"shortcut", shortcut(tool)}});
    }
    return list;
}

QString AppModel::openPanelMessage()
{
    return text("Choose the documents you want to convert.", "Choisissez les documents à convertir.");
}

QString AppModel::openPanelPrompt()
{
    return text("Add", "Ajouter");
}

QStringList AppModel::openPanelNameFilters()
{
    QStringList patterns;
    for (const DocumentFormat format : DocumentFormats::allCases) {
        for (const std::string_view extension : matchingExtensions(format)) {
            const QString name = QString::fromUtf8(extension.data(), static_cast<qsizetype>(extension.size()));
            patterns << "*." + name << "*." + name.toUpper();
        }
    }
    return {text("Documents", "Documents") + " (" + patterns.join(' ') + ')'};
}

} // namespace nolfa
