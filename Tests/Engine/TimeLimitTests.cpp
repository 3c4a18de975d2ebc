#include "Engine/TimeLimit.h"

#include "Support/Expect.h"
#include "Support/Processes.h"

#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <thread>

using namespace nolfa;
using namespace nolfa::testing;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

namespace {

/// Sleeps until it is asked to stop.
void sleepUntilStopped(const std::stop_token &stop)
{
    while (!stop.stop_requested())
        std::this_thread::sleep_for(1ms);
}

} // namespace

TEST(TimeLimit, anOperationInTimeReturnsItsValueAndLeavesNothingBehind)
{
    // A sanitizer's own thread comes with the first of ours.
    std::thread([] {}).join();
    const Footprint before = footprint();
    const auto start = Clock::now();
    EXPECT_EQ(withTimeout(60, "step", {}, [](const std::stop_token &) { return std::string("done"); }), "done");
    EXPECT_LT(Clock::now() - start, 10s);
    EXPECT_EQ(footprint(), before);
}

TEST(TimeLimit, anOperationMayReturnNothing)
{
    bool ran = false;
    withTimeout(60, "step", {}, [&](const std::stop_token &) { ran = true; });
    EXPECT_TRUE(ran);
}

TEST(TimeLimit, aFailureInTimePassesUnchanged)
{
    expectError(ConversionError::engineFailure("mine"), [] {
        withTimeout(60, "step", {}, [](const std::stop_token &) { throw ConversionError::engineFailure("mine"); });
    });
}

TEST(TimeLimit, anOperationThatNeverEndsIsStoppedAtTheLimit)
{
    const auto start = Clock::now();
    expectError(ConversionError::timedOut("reading"), [] { withTimeout(0.1, "reading", {}, sleepUntilStopped); });
    EXPECT_GE(Clock::now() - start, 100ms);
    EXPECT_LT(Clock::now() - start, 5s);
}

TEST(TimeLimit, anOperationThatIgnoresTheStopIsWaitedForAndItsResultDropped)
{
    const auto start = Clock::now();
    expectError(ConversionError::timedOut("step"), [] {
        (void)withTimeout(0.1, "step", {}, [](const std::stop_token &) {
            std::this_thread::sleep_for(200ms);
            return 1;
        });
    });
    EXPECT_GE(Clock::now() - start, 200ms);
}

TEST(TimeLimit, afterTheLimitTheOperationsOwnFailureIsDroppedToo)
{
    expectError(ConversionError::timedOut("step"), [] {
        withTimeout(0.05, "step", {}, [](const std::stop_token &stop) {
            sleepUntilStopped(stop);
            throw CancellationError();
        });
    });
}

TEST(TimeLimit, aLimitOfZeroBeatsAnOperationThatHasToWait)
{
    for (const double limit : {0.0, 1e-10, -1e-10}) {
        expectError(ConversionError::timedOut("step"), [limit] { withTimeout(limit, "step", {}, sleepUntilStopped); });
    }
}

TEST(TimeLimit, anOuterStopReachesTheOperationAndCancels)
{
    std::stop_source source;
    std::jthread stopper([&source] {
        std::this_thread::sleep_for(50ms);
        source.request_stop();
    });
    EXPECT_THROW(withTimeout(60, "step", source.get_token(), sleepUntilStopped), CancellationError);
}

TEST(TimeLimit, anOuterStopBeforeTheCallCancels)
{
    std::stop_source source;
    source.request_stop();
    EXPECT_THROW(withTimeout(60, "step", source.get_token(), sleepUntilStopped), CancellationError);
}

TEST(TimeLimit, longLimitsAreNotShort)
{
    // Longer than the clock can count, yet a number of nanoseconds.
    EXPECT_EQ(withTimeout(1.8e10, "step", {}, [](const std::stop_token &) { return 3; }), 3);
}

TEST(TimeLimitDeathTest, whatIsNoTimeSpanStopsTheProcess)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto limit = [](double seconds) { withTimeout(seconds, "step", {}, [](const std::stop_token &) {}); };
    for (const double seconds : {std::nan(""), std::numeric_limits<double>::infinity(), -1.0, -0.5, 2e10})
        EXPECT_DEATH(limit(seconds), "") << seconds;
}
