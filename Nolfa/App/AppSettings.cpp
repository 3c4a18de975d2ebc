#include "Nolfa/App/AppSettings.h"

#include "Localization/NolfaFormat.h"
#include "Nolfa/Support/FileURL.h"

#include <QDir>
#include <QSettings>
#include <QVariantMap>
#include <utility>

namespace nolfa {

namespace {

const QString languageKey = QStringLiteral("nolfa.language");
const QString outputModeKey = QStringLiteral("nolfa.outputMode");
const QString customOutputDirectoryKey = QStringLiteral("nolfa.customOutputDirectory");
const QString revealAfterConvertKey = QStringLiteral("nolfa.revealAfterConvert");

QString toText(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// One map a choice, as pickers want it.
template <typename Choices> QVariantList listOf(const Choices &choices)
{
    QVariantList list;
    for (const auto choice : choices)
        list.append(QVariantMap{{"value", toText(rawValue(choice))}, {"text", toText(title(choice))}});
    return list;
}

/// Sets a field and tells whether it is another value now.
template <typename Value> bool assign(Value &field, Value value)
{
    if (field == value)
        return false;
    field = std::move(value);
    return true;
}

} // namespace

std::optional<OutputMode> OutputModes::fromRawValue(std::string_view text)
{
    for (const OutputMode mode : allCases) {
        if (rawValue(mode) == text)
            return mode;
    }
    return std::nullopt;
}

std::string_view rawValue(OutputMode mode)
{
    return mode == OutputMode::custom ? "custom" : "besideOriginal";
}

std::string title(OutputMode mode)
{
    return mode == OutputMode::custom ? T("In a folder I choose", "Dans un dossier de mon choix")
                                      : T("Next to the original", "À côté de l’original");
}

AppSettings::AppSettings(std::unique_ptr<QSettings> defaults)
    : m_defaults(std::move(defaults))
{
    load();
    putLanguageInForce();
}

AppSettings::~AppSettings() = default;

std::unique_ptr<QSettings> AppSettings::standardDefaults()
{
    auto defaults = std::make_unique<QSettings>(
        QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("nolfa"), QString());
    // What the user chose, or our own defaults; nothing of the machine's.
    defaults->setFallbacksEnabled(false);
    return defaults;
}

void AppSettings::load()
{
    const auto text = [this](const QString &key) { return m_defaults->value(key).toString(); };
    m_language = languageFromRawValue(text(languageKey).toStdString()).value_or(m_language);
    m_outputMode = OutputModes::fromRawValue(text(outputModeKey).toStdString()).value_or(m_outputMode);
    if (m_defaults->contains(customOutputDirectoryKey))
        m_customOutputDirectoryPath = text(customOutputDirectoryKey);
    m_revealAfterConvert = m_defaults->value(revealAfterConvertKey).toBool();
}

void AppSettings::putLanguageInForce() const
{
    NolfaL10n::setCurrent(m_language);
    NolfaFormat::setLocale(locale(m_language));
}

Locale AppSettings::locale(NolfaLanguage language)
{
    Locale locale = Locale::current();
    if (language != NolfaLanguage::system)
        locale.language = resolvedCode(language);
    return locale;
}

void AppSettings::write(const QString &key, const QVariant &value)
{
    if (value.isValid())
        m_defaults->setValue(key, value);
    else
        m_defaults->remove(key);
    m_defaults->sync();
}

void AppSettings::setLanguage(NolfaLanguage language)
{
    if (!assign(m_language, language))
        return;
    putLanguageInForce();
    write(languageKey, languageText());
    emit languageChanged();
}

void AppSettings::setOutputMode(OutputMode mode)
{
    const bool isNew = assign(m_outputMode, mode);
    write(outputModeKey, outputModeText());
    if (isNew)
        emit outputModeChanged();
}

void AppSettings::setCustomOutputDirectoryPath(std::optional<QString> path)
{
    const bool isNew = assign(m_customOutputDirectoryPath, std::move(path));
    write(customOutputDirectoryKey, m_customOutputDirectoryPath ? QVariant(customOutputDirectoryText()) : QVariant());
    if (isNew)
        emit customOutputDirectoryPathChanged();
}

void AppSettings::setRevealAfterConvert(bool reveal)
{
    const bool isNew = assign(m_revealAfterConvert, reveal);
    write(revealAfterConvertKey, reveal);
    if (isNew)
        emit revealAfterConvertChanged();
}

std::optional<std::filesystem::path> AppSettings::outputDirectory() const
{
    if (m_outputMode != OutputMode::custom || customOutputDirectoryText().isEmpty())
        return std::nullopt;
    return std::filesystem::path(customOutputDirectoryText().toStdString());
}

void AppSettings::outputFolderChosen(const QUrl &url)
{
    const std::optional<std::filesystem::path> folder = FileURL::toPath(url);
    if (!folder)
        return;
    setCustomOutputDirectoryPath(QString::fromStdString(folder->native()));
    setOutputMode(OutputMode::custom);
}

QVariantList AppSettings::languageList()
{
    return listOf(NolfaLanguages::allCases);
}

QVariantList AppSettings::outputModeList()
{
    return listOf(OutputModes::allCases);
}

QString AppSettings::languageText() const
{
    return toText(rawValue(m_language));
}

void AppSettings::setLanguageText(const QString &text)
{
    if (const std::optional<NolfaLanguage> language = languageFromRawValue(text.toStdString()))
        setLanguage(*language);
}

QString AppSettings::outputModeText() const
{
    return toText(rawValue(m_outputMode));
}

void AppSettings::setOutputModeText(const QString &text)
{
    if (const std::optional<OutputMode> mode = OutputModes::fromRawValue(text.toStdString()))
        setOutputMode(*mode);
}

QString AppSettings::customOutputDirectoryText() const
{
    return m_customOutputDirectoryPath.value_or(QString());
}

QString AppSettings::shortCustomOutputDirectory() const
{
    const QString path = customOutputDirectoryText();
    const QString home = QDir::homePath();
    return path == home || path.startsWith(home + '/') ? '~' + path.mid(home.size()) : path;
}

QUrl AppSettings::customOutputDirectoryURL() const
{
    const QString path = customOutputDirectoryText();
    return path.isEmpty() ? QUrl() : FileURL::fromPath(path.toStdString());
}

} // namespace nolfa
