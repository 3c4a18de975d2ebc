#pragma once

#include "Nolfa/Support/AlarmClock.h"

#include <algorithm>
#include <list>

namespace nolfa::testing {

/// A clock whose time passes when the test says so. Outlives its alarms.
class ManualClock : public AlarmClock {
public:
    [[nodiscard]] std::unique_ptr<Alarm> ringAfter(std::chrono::milliseconds span, std::function<void()> ring) override
    {
        m_entries.push_back({m_now + span, std::move(ring)});
        return std::make_unique<ManualAlarm>(*this, std::prev(m_entries.end()));
    }

    void advance(std::chrono::milliseconds span)
    {
        m_now += span;
        for (Entry &entry : m_entries) {
            if (entry.ring && entry.when <= m_now) {
                const std::function<void()> ring = std::exchange(entry.ring, nullptr);
                ring();
            }
        }
    }

    /// How many alarms are set and haven't rung.
    [[nodiscard]] std::ptrdiff_t pending() const
    {
        return std::ranges::count_if(m_entries, [](const Entry &entry) { return entry.ring != nullptr; });
    }

private:
    struct Entry {
        std::chrono::milliseconds when;
        std::function<void()> ring;
    };

    class ManualAlarm : public Alarm {
    public:
        ManualAlarm(ManualClock &clock, std::list<Entry>::iterator entry)
            : m_clock(clock)
            , m_entry(entry)
        {
        }
        ManualAlarm(const ManualAlarm &) = delete;
        ManualAlarm &operator=(const ManualAlarm &) = delete;
        ~ManualAlarm() override { m_clock.m_entries.erase(m_entry); }

    private:
        ManualClock &m_clock;
        std::list<Entry>::iterator m_entry;
    };

    std::chrono::milliseconds m_now{0};
    std::list<Entry> m_entries;
};

} // namespace nolfa::testing
