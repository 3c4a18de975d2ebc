#include "Nolfa/Support/AlarmClock.h"

#include "Nolfa/Support/EventLoop.h"

#include <gtest/gtest.h>

using namespace nolfa;
using namespace nolfa::testing;
using namespace std::chrono_literals;

class AlarmClockTests : public ::testing::Test {
protected:
    AlarmClockTests() { ensureApplication(); }
    SystemAlarmClock clock;
};

TEST_F(AlarmClockTests, ringsOnceWhenTheTimeIsOver)
{
    int rung = 0;
    const auto start = std::chrono::steady_clock::now();
    const std::unique_ptr<Alarm> alarm = clock.ringAfter(30ms, [&] { ++rung; });
    ASSERT_TRUE(spinUntil([&] { return rung > 0; }));
    EXPECT_GE(std::chrono::steady_clock::now() - start, 29ms);
    EXPECT_FALSE(spinUntil([&] { return rung > 1; }, 100ms));
}

TEST_F(AlarmClockTests, anAlarmTakenBackNeverRings)
{
    bool rung = false;
    clock.ringAfter(1ms, [&] { rung = true; }).reset();
    EXPECT_FALSE(spinUntil([&] { return rung; }, 50ms));
}

TEST_F(AlarmClockTests, anAlarmMayEndItself)
{
    std::unique_ptr<Alarm> alarm;
    bool rung = false;
    alarm = clock.ringAfter(1ms, [&] {
        alarm.reset();
        rung = true;
    });
    EXPECT_TRUE(spinUntil([&] { return rung; }));
    EXPECT_FALSE(alarm);
}
