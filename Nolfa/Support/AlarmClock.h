#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace nolfa {

/// One call to come. Destruction takes it back.
class Alarm {
public:
    Alarm() = default;
    Alarm(const Alarm &) = delete;
    Alarm &operator=(const Alarm &) = delete;
    virtual ~Alarm() = default;
};

/// Where screen models get their time from. Main thread only.
class AlarmClock {
public:
    AlarmClock() = default;
    AlarmClock(const AlarmClock &) = delete;
    AlarmClock &operator=(const AlarmClock &) = delete;
    virtual ~AlarmClock() = default;

    /// Calls @p ring once, from the event loop, when @p span is over and the alarm still exists. @p ring may destroy
    /// the alarm.
    [[nodiscard]] virtual std::unique_ptr<Alarm> ringAfter(std::chrono::milliseconds span, std::function<void()> ring)
        = 0;
};

/// The machine's clock.
class SystemAlarmClock : public AlarmClock {
public:
    [[nodiscard]] std::unique_ptr<Alarm> ringAfter(std::chrono::milliseconds span, std::function<void()> ring) override;
};

} // namespace nolfa
