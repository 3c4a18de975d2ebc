#pragma once

#include "DesignSystem/Language.h"
#include "Nolfa/App/AppSettings.h"

#include <QObject>
#include <QSettings>
#include <QTemporaryDir>
#include <memory>

namespace nolfa::testing {

/// Settings in a file of their own, for screens: a change of language redraws them, as in the application.
class SettingsOnFile : public QObject {
    Q_OBJECT
    Q_PROPERTY(nolfa::AppSettings *settings READ settings NOTIFY renewed)

public:
    SettingsOnFile() { renew(); }

    [[nodiscard]] AppSettings *settings() const { return m_settings.get(); }

    /// Begins anew, with nothing stored.
    Q_INVOKABLE void renew()
    {
        m_file.reset();
        m_file = std::make_unique<QTemporaryDir>();
        std::unique_ptr<AppSettings> before = std::move(m_settings);
        m_settings = std::make_unique<AppSettings>(defaults());
        connect(m_settings.get(), &AppSettings::languageChanged, &Language::shared(), &Language::refresh);
        Language::shared().refresh();
        emit renewed();
    }

    /// What is stored under a key.
    Q_INVOKABLE QVariant stored(const QString &key) const { return defaults()->value(key); }

signals:
    void renewed();

private:
    [[nodiscard]] std::unique_ptr<QSettings> defaults() const
    {
        return std::make_unique<QSettings>(m_file->filePath("settings.ini"), QSettings::IniFormat);
    }

    std::unique_ptr<QTemporaryDir> m_file;
    std::unique_ptr<AppSettings> m_settings;
};

} // namespace nolfa::testing
