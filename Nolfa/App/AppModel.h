#pragma once

#include "Nolfa/App/AppSettings.h"
#include "Nolfa/Features/Convert/ConvertViewModel.h"

#include <QList>
#include <QObject>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QVariant>
#include <array>
#include <memory>
#include <string>

namespace nolfa {

/// The root of the application: the settings, the models of the tools, and which tool is on show. One for the
/// process, created before any text is shown. Main thread only.
class AppModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(nolfa::AppSettings *settings READ settings CONSTANT)
    Q_PROPERTY(nolfa::ConvertViewModel *convert READ convert CONSTANT)
    Q_PROPERTY(nolfa::AppModel::Tool tool READ tool WRITE setTool NOTIFY toolChanged)
    Q_PROPERTY(QSize leastContentSize READ leastContentSize NOTIFY toolChanged)
    Q_PROPERTY(bool showExpectations READ showExpectations WRITE setShowExpectations NOTIFY showExpectationsChanged)
    Q_PROPERTY(QVariantList tools READ toolList NOTIFY textsChanged)
    Q_PROPERTY(QString openPanelMessage READ openPanelMessage NOTIFY textsChanged)
    Q_PROPERTY(QString openPanelPrompt READ openPanelPrompt NOTIFY textsChanged)
    Q_PROPERTY(QStringList openPanelNameFilters READ openPanelNameFilters NOTIFY textsChanged)

public:
    enum class Tool { convert, compare, watermark };
    Q_ENUM(Tool)

    static constexpr std::array allTools{Tool::convert, Tool::compare, Tool::watermark};

    /// Its name, which is also its identity in lists.
    [[nodiscard]] static QString rawValue(Tool tool);
    /// The label of the switcher's segment and of the menu entry, in the language in force.
    [[nodiscard]] static QString title(Tool tool);
    /// "Ctrl+1" and so on, by the position.
    [[nodiscard]] static QString shortcut(Tool tool);
    /// What the tool needs of the window's content, in pixels that don't depend on the device.
    [[nodiscard]] static QSize leastContentSize(Tool tool);

    /// The application as it is for its user.
    AppModel();
    /// @param defaults  where the settings are kept
    AppModel(std::unique_ptr<QSettings> defaults, ConvertViewModel::Surroundings surroundings);

    [[nodiscard]] AppSettings *settings() { return &m_settings; }
    [[nodiscard]] ConvertViewModel *convert() { return &m_convert; }

    [[nodiscard]] Tool tool() const { return m_tool; }
    /// Does nothing if the tool is already on show.
    void setTool(Tool tool);

    [[nodiscard]] bool showExpectations() const { return m_showExpectations; }
    void setShowExpectations(bool show);

    /// Asks for the open panel of the convert tool. The window shows it, with the texts and filters of this model,
    /// for several files and no folders, and answers with filesChosen(), or not at all.
    Q_INVOKABLE void chooseFiles();
    /// The user left the panel with files.
    Q_INVOKABLE void filesChosen(const QList<QUrl> &urls);

signals:
    void toolChanged();
    void showExpectationsChanged();
    void openPanelRequested();
    /// Every text is to be read anew.
    void textsChanged();

private:
    [[nodiscard]] QSize leastContentSize() const { return leastContentSize(m_tool); }
    /// One map a tool: "tool", "rawValue", "title", "shortcut".
    [[nodiscard]] static QVariantList toolList();
    [[nodiscard]] static QString openPanelMessage();
    [[nodiscard]] static QString openPanelPrompt();
    /// All that can be opened, in lower and upper case since panels tell them apart.
    [[nodiscard]] static QStringList openPanelNameFilters();

    // The settings come first: they put the language in force.
    AppSettings m_settings;
    ConvertViewModel m_convert;
    Tool m_tool = Tool::convert;
    bool m_showExpectations = false;
};

} // namespace nolfa
