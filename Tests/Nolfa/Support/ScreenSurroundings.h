#pragma once

#include "DesignSystem/Language.h"
#include "Nolfa/App/AppSettings.h"
#include "Nolfa/Features/Settings/AboutInfo.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QObject>
#include <QSettings>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>

namespace nolfa::testing {

/// What screens meet outside of themselves, in a folder of its own: settings whose language redraws them, as in the
/// application; a bundle; and a browser that remembers what it was to open.
class ScreenSurroundings : public QObject {
    Q_OBJECT
    Q_PROPERTY(nolfa::AppSettings *settings READ settings NOTIFY renewed)
    Q_PROPERTY(QStringList opened MEMBER m_opened NOTIFY openedChanged)
    Q_PROPERTY(QString folder READ folder NOTIFY renewed)

public:
    ScreenSurroundings()
    {
        QDesktopServices::setUrlHandler("https", this, "open");
        renew();
    }
    ~ScreenSurroundings() override { QDesktopServices::unsetUrlHandler("https"); }

    [[nodiscard]] AppSettings *settings() const { return m_settings.get(); }
    [[nodiscard]] QString folder() const { return m_folder->path(); }

    /// Begins anew, with nothing stored and nothing opened.
    Q_INVOKABLE void renew()
    {
        // Screens may still look at the settings before.
        if (m_settings)
            m_settings.release()->deleteLater();
        m_folder = std::make_unique<QTemporaryDir>();
        m_settings = std::make_unique<AppSettings>(defaults());
        connect(m_settings.get(), &AppSettings::languageChanged, &Language::shared(), &Language::refresh);
        m_opened.clear();
        Language::shared().refresh();
        emit renewed();
    }

    /// What is stored under a key.
    Q_INVOKABLE QVariant stored(const QString &key) const { return defaults()->value(key); }

    /// A folder below the folder, and its address.
    Q_INVOKABLE QUrl makeFolder(const QString &name) const
    {
        QDir(folder()).mkpath(name);
        return QUrl::fromLocalFile(m_folder->filePath(name));
    }

    /// What the pane of that name knows of a bundle with these values.
    Q_INVOKABLE QObject *about(const QVariantMap &values) const
    {
        QFile file(m_folder->filePath("Info.json"));
        if (file.open(QFile::WriteOnly))
            file.write(QJsonDocument(QJsonObject::fromVariantMap(values)).toJson());
        file.close();
        return new AboutInfo(Bundle(folder().toStdString()));
    }

public slots:
    void open(const QUrl &url)
    {
        m_opened.append(url.toString());
        emit openedChanged();
    }

signals:
    void renewed();
    void openedChanged();

private:
    [[nodiscard]] std::unique_ptr<QSettings> defaults() const
    {
        return std::make_unique<QSettings>(m_folder->filePath("settings.ini"), QSettings::IniFormat);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<AppSettings> m_settings;
    QStringList m_opened;
};

} // namespace nolfa::testing
