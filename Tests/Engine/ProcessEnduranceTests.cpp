#include "Engine/ProcessRunner.h"

#include "Engine/ConversionError.h"
#include "Support/Processes.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

using namespace nolfa;
using namespace nolfa::testing;
using namespace std::chrono_literals;

TEST(ProcessEndurance, tenThousandChildrenLeaveNothingBehind)
{
    // The reaper's thread starts with the first child that is stopped, and stays.
    EXPECT_THROW((void)ProcessRunner::run("/bin/sleep", {"9"}, {.timeout = 0, .label = "x"}, {}), ConversionError);
    ASSERT_TRUE(waitUntil(5s, [] { return footprint().children == 0; }));
    const Footprint before = footprint();

    constexpr int threads = 4;
    constexpr int turns = 2500;
    std::atomic<int> finished = 0;
    {
        std::vector<std::jthread> workers;
        for (int worker = 0; worker < threads; ++worker) {
            workers.emplace_back([&finished] {
                for (int turn = 0; turn < turns; ++turn) {
                    // Every tenth is stopped on its way.
                    const double timeout = turn % 10 == 0 ? 0.0005 : 60;
                    try {
                        const ProcessResult result = ProcessRunner::run(
                            testProgram("exit-with"), {"7"}, {.stdin = "x", .timeout = timeout, .label = "x"}, {});
                        finished += result.status == 7 ? 1 : 0;
                    } catch (const ConversionError &error) {
                        finished += error == ConversionError::timedOut("x") ? 1 : 0;
                    }
                }
            });
        }
    }
    EXPECT_EQ(finished, threads * turns);
    EXPECT_TRUE(waitUntil(5s, [] { return footprint().children == 0; }));
    EXPECT_EQ(footprint(), before);
}
