#pragma once

#include "Nolfa/App/AppModel.h"
#include "Nolfa/Support/HeldService.h"
#include "Nolfa/Support/ManualClock.h"
#include "Nolfa/Support/RecordingDesktop.h"
#include "Support/TemporaryFolder.h"

#include <QObject>
#include <QQuickWindow>
#include <QStringList>
#include <QUrl>
#include <memory>

namespace nolfa::testing {

/// The application as screens see it, with conversions and time in the hands of a test. Main thread only.
class ScreenStage : public QObject {
    Q_OBJECT
    Q_PROPERTY(QObject *app READ app NOTIFY appChanged)
    Q_PROPERTY(QStringList revealed READ revealed)
    Q_PROPERTY(QStringList opened READ opened)
    Q_PROPERTY(QStringList calls READ calls)

public:
    ScreenStage();
    ~ScreenStage() override;

    /// A new application, with nothing gathered and English in force. The old one stays until the next call, so that
    /// screens can let go of it.
    Q_INVOKABLE void restart();

    [[nodiscard]] QObject *app() { return m_app.get(); }
    /// Names of the files that the desktop was asked to show or to open.
    [[nodiscard]] QStringList revealed() const;
    [[nodiscard]] QStringList opened() const;
    /// "name > target" for each conversion that began.
    [[nodiscard]] QStringList calls() const;

    /// Gathers files of these names from a folder that needn't exist.
    Q_INVOKABLE void add(const QStringList &names);
    Q_INVOKABLE [[nodiscard]] QList<QUrl> urls(const QStringList &names) const;

    // How conversions end; the row changes when events are handled.
    Q_INVOKABLE void succeed(const QString &name, const QString &output);
    /// With the sentence about the password.
    Q_INVOKABLE void failLocked(const QString &name);

    Q_INVOKABLE void advance(int milliseconds) { m_clock->advance(std::chrono::milliseconds(milliseconds)); }

    // As the window system sends it when files are dragged over a window.
    Q_INVOKABLE void dragEnter(QQuickItem *over, double x, double y, const QList<QUrl> &urls);
    Q_INVOKABLE void dragLeave(QQuickItem *over);
    /// @return whether the drop was taken
    Q_INVOKABLE bool drop(QQuickItem *over, double x, double y, const QList<QUrl> &urls);

    /// As the user's choice in the desktop's settings arrives; 0 brings the usual size back.
    Q_INVOKABLE void setTextSize(double points);

signals:
    void appChanged();

private:
    const TemporaryFolder m_folder;
    int m_starts = 0;
    double m_usualTextSize;
    std::shared_ptr<HeldService> m_service;
    std::shared_ptr<ManualClock> m_clock = std::make_shared<ManualClock>();
    std::shared_ptr<RecordingDesktop> m_desktop;
    std::unique_ptr<AppModel> m_last;
    std::unique_ptr<AppModel> m_app;
};

} // namespace nolfa::testing
