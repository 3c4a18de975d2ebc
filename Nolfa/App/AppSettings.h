#pragma once

#include "Localization/NolfaL10n.h"
#include "Platform/Locale.h"

#include <QObject>
#include <QString>
#include <QUrl>
#include <QVariantList>
#include <array>
#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>

class QSettings;

namespace nolfa {

/// Where converted files go.
enum class OutputMode { besideOriginal, custom };

namespace OutputModes {

inline constexpr std::array allCases{OutputMode::besideOriginal, OutputMode::custom};

[[nodiscard]] std::optional<OutputMode> fromRawValue(std::string_view text);

} // namespace OutputModes

/// "besideOriginal" or "custom"; also the identity in lists.
[[nodiscard]] std::string_view rawValue(OutputMode mode);

/// What the choice is called, in the language in force.
[[nodiscard]] std::string title(OutputMode mode);

/// The four settings that outlive the process. Carries the language into NolfaL10n and NolfaFormat. Main thread only.
///
/// Each setter writes its key at once. A stored value that means nothing counts as missing, and is left alone until
/// the user chooses.
class AppSettings : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString language READ languageText WRITE setLanguageText NOTIFY languageChanged)
    Q_PROPERTY(QString outputMode READ outputModeText WRITE setOutputModeText NOTIFY outputModeChanged)
    Q_PROPERTY(QString customOutputDirectoryPath READ customOutputDirectoryText WRITE setCustomOutputDirectoryText RESET
            resetCustomOutputDirectoryPath NOTIFY customOutputDirectoryPathChanged)
    Q_PROPERTY(
        bool revealAfterConvert READ revealAfterConvert WRITE setRevealAfterConvert NOTIFY revealAfterConvertChanged)

    // What there is to choose from: one map a choice, with its "value" and its "text" in the language in force.
    Q_PROPERTY(QVariantList languages READ languageList NOTIFY languageChanged)
    Q_PROPERTY(QVariantList outputModes READ outputModeList NOTIFY languageChanged)
    /// The folder chosen, for people: below their own folder it begins with "~". Empty: none.
    Q_PROPERTY(
        QString shortCustomOutputDirectory READ shortCustomOutputDirectory NOTIFY customOutputDirectoryPathChanged)
    /// The same as an address. Empty: none.
    Q_PROPERTY(QUrl customOutputDirectoryURL READ customOutputDirectoryURL NOTIFY customOutputDirectoryPathChanged)

public:
    /// Loads, and puts the language in force.
    /// @param defaults  where the settings are kept
    explicit AppSettings(std::unique_ptr<QSettings> defaults);
    ~AppSettings() override;

    /// The user's own settings file.
    [[nodiscard]] static std::unique_ptr<QSettings> standardDefaults();

    [[nodiscard]] NolfaLanguage language() const { return m_language; }
    void setLanguage(NolfaLanguage language);

    [[nodiscard]] OutputMode outputMode() const { return m_outputMode; }
    void setOutputMode(OutputMode mode);

    [[nodiscard]] const std::optional<QString> &customOutputDirectoryPath() const
    {
        return m_customOutputDirectoryPath;
    }
    void setCustomOutputDirectoryPath(std::optional<QString> path);
    void resetCustomOutputDirectoryPath() { setCustomOutputDirectoryPath(std::nullopt); }

    [[nodiscard]] bool revealAfterConvert() const { return m_revealAfterConvert; }
    void setRevealAfterConvert(bool reveal);

    /// Absent: beside the original.
    [[nodiscard]] std::optional<std::filesystem::path> outputDirectory() const;

    /// The user left the panel with a folder: it is taken, and files go there from now on. Whatever isn't a folder's
    /// address on this machine changes nothing.
    Q_INVOKABLE void outputFolderChosen(const QUrl &url);

signals:
    /// The language is in force already: every text is to be made anew.
    void languageChanged();
    void outputModeChanged();
    void customOutputDirectoryPathChanged();
    void revealAfterConvertChanged();

private:
    /// The region of the machine with the language chosen.
    static Locale locale(NolfaLanguage language);

    void load();
    void putLanguageInForce() const;
    void write(const QString &key, const QVariant &value);

    // As the screens say it: raw values. What means nothing changes nothing.
    [[nodiscard]] QString languageText() const;
    void setLanguageText(const QString &text);
    [[nodiscard]] QString outputModeText() const;
    void setOutputModeText(const QString &text);
    [[nodiscard]] QString customOutputDirectoryText() const;
    [[nodiscard]] QString shortCustomOutputDirectory() const;
    [[nodiscard]] QUrl customOutputDirectoryURL() const;
    [[nodiscard]] static QVariantList languageList();
    [[nodiscard]] static QVariantList outputModeList();
    void setCustomOutputDirectoryText(const QString &text) { setCustomOutputDirectoryPath(text); }

    std::unique_ptr<QSettings> m_defaults;
    NolfaLanguage m_language = NolfaLanguage::system;
    OutputMode m_outputMode = OutputMode::besideOriginal;
    std::optional<QString> m_customOutputDirectoryPath;
    bool m_revealAfterConvert = false;
};

} // namespace nolfa
