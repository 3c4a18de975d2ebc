#include "Nolfa/Support/AlarmClock.h"

#include <QTimer>

namespace nolfa {

namespace {

class TimerAlarm : public Alarm {
public:
    TimerAlarm(std::chrono::milliseconds span, std::function<void()> ring)
    {
        m_timer.setSingleShot(true);
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, [ring = std::move(ring)] {
            // Outlives the alarm, should the call destroy it.
            const std::function<void()> call = ring;
            call();
        });
        m_timer.start(span);
    }

private:
    QTimer m_timer;
};

} // namespace

std::unique_ptr<Alarm> SystemAlarmClock::ringAfter(std::chrono::milliseconds span, std::function<void()> ring)
{
    return std::make_unique<TimerAlarm>(span, std::move(ring));
}

} // namespace nolfa
