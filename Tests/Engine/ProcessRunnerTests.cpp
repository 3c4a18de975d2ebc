#include "Engine/ProcessRunner.h"

#include "Support/Expect.h"
#include "Support/Processes.h"
#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"

#include <chrono>
#include <csignal>
#include <fstream>
#include <future>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <thread>

using namespace nolfa;
using namespace nolfa::testing;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
namespace fs = std::filesystem;

namespace {

ProcessResult runShell(
    const std::string &script, const ProcessRunner::Options &options = {.timeout = 60, .label = "sh"})
{
    return ProcessRunner::run("/bin/sh", {"-c", script}, options, std::stop_token());
}

/// Runs a program on another thread until the test stops it.
struct Running {
    Running(const fs::path &program, std::vector<std::string> arguments, double timeout = 60,
        std::optional<std::string> input = std::nullopt)
        : error(std::async(
            std::launch::async, [this, program, arguments = std::move(arguments), timeout, input = std::move(input)] {
                const ProcessRunner::Options options{.stdin = input, .timeout = timeout, .label = "label"};
                std::optional<ConversionError> result;
                try {
                    (void)ProcessRunner::run(program, arguments, options, source.get_token());
                } catch (const ConversionError &caught) {
                    result = caught;
                }
                end = Clock::now();
                return result;
            }))
    {
    }

    std::stop_source source;
    Clock::time_point end;
    std::future<std::optional<ConversionError>> error;
};

} // namespace

TEST(ProcessRunner, collectsBothStreamsAndTheStatus)
{
    const ProcessResult result = runShell("printf out; printf error >&2; exit 3");
    EXPECT_EQ(result, (ProcessResult{3, "out", "error"}));
}

TEST(ProcessRunner, aStatusOtherThanZeroIsNoFailure)
{
    EXPECT_EQ(ProcessRunner::run(testProgram("exit-with"), {"42"}, {.timeout = 60, .label = "x"}, {}).status, 42);
}

TEST(ProcessRunner, aChildKilledByASignalReportsItsNumber)
{
    EXPECT_EQ(runShell("kill -9 $$").status, 9);
    EXPECT_EQ(runShell("kill -15 $$").status, 15);
}

TEST(ProcessRunner, argumentsArriveAsTheyAre)
{
    const std::vector<std::string> arguments{"", "a b", "'\"", "-x", "été", "line\nfeed", "\xFF", "*", "$HOME"};
    std::vector<std::string> all{"-c", "for a; do printf '%s\\0' \"$a\"; done", "sh"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    std::string expected;
    for (const std::string &argument : arguments)
        expected += argument + '\0';
    EXPECT_EQ(ProcessRunner::run("/bin/sh", all, {.timeout = 60, .label = "sh"}, {}).stdout, expected);
}

TEST(ProcessRunner, feedsTheInputAndClosesIt)
{
    std::string input = "first\n" + std::string(3'000'000, 'x');
    EXPECT_EQ(runShell("cat", {.stdin = input, .timeout = 60, .label = "x"}).stdout, input);
    EXPECT_EQ(runShell("cat", {.stdin = "", .timeout = 60, .label = "x"}).stdout, "");
}

TEST(ProcessRunner, runsInTheDirectoryGiven)
{
    const TemporaryFolder folder;
    const ProcessRunner::Options options{.currentDirectory = folder.path(), .timeout = 60, .label = "x"};
    EXPECT_EQ(runShell("pwd", options).stdout, folder.path().string() + "\n");
}

TEST(ProcessRunner, aChildThatFloodsBothStreamsFinishes)
{
    constexpr std::size_t size = 24U << 20U;
    const ProcessResult result
        = ProcessRunner::run(testProgram("flood-streams"), {std::to_string(size)}, {.timeout = 60, .label = "x"}, {});
    EXPECT_EQ(result.stdout, std::string(size, 'o'));
    EXPECT_EQ(result.stderr, std::string(size, 'e'));
}

TEST(ProcessRunner, aChildThatWritesByTheLineDoesNotWakeUsForEach)
{
    constexpr long lines = 10'000;
    rusage before{};
    rusage after{};
    ::getrusage(RUSAGE_THREAD, &before);
    const ProcessResult result = runShell("i=0; while [ $i -lt 10000 ]; do echo x; echo y >&2; i=$((i + 1)); done");
    ::getrusage(RUSAGE_THREAD, &after);
    EXPECT_EQ(result.stdout.size(), 2U * lines);
    EXPECT_EQ(result.stderr.size(), 2U * lines);
    EXPECT_LT(after.ru_nvcsw - before.ru_nvcsw, lines / 10);
}

TEST(ProcessRunner, aChildThatFloodsWhileItIsFedFinishes)
{
    const std::string input(8U << 20U, 'x');
    const ProcessResult result = runShell("tee /dev/stderr", {.stdin = input, .timeout = 60, .label = "x"});
    EXPECT_EQ(result.stdout, input);
    EXPECT_EQ(result.stderr, input);
}

TEST(ProcessRunner, inputThatNobodyReadsHarmsNobody)
{
    const std::string input(10U << 20U, 'x');
    const ProcessRunner::Options options{.stdin = input, .timeout = 60, .label = "x"};
    EXPECT_EQ(ProcessRunner::run(testProgram("exit-with"), {"5"}, options, {}).status, 5);
    EXPECT_EQ(runShell("exec <&-; sleep 0.1; exit 6", options).status, 6);
    EXPECT_EQ(ProcessRunner::run(testProgram("never-reads"), {"50"}, options, {}).status, 0);
}

TEST(ProcessRunner, theTimeLimitBeginsWhenTheInputWasTaken)
{
    // Longer than the limit, but the child leaves its input in the pipe for all that time.
    const std::string input(1U << 20U, 'x');
    const ProcessRunner::Options options{.stdin = input, .timeout = 0.1, .label = "x"};
    EXPECT_EQ(ProcessRunner::run(testProgram("never-reads"), {"400"}, options, {}).status, 0);
}

TEST(ProcessRunner, aMissingProgramIsAnEngineFailureInTheSystemsWords)
{
    const auto launch = [](const fs::path &program, const std::optional<fs::path> &folder = std::nullopt) {
        return expectCase<ConversionError::EngineFailure>([&] {
            (void)ProcessRunner::run(program, {}, {.currentDirectory = folder, .timeout = 60, .label = "x"}, {});
        }).sentence;
    };
    const TemporaryFolder folder;
    EXPECT_EQ(launch("/nonexistent/program"), "No such file or directory");
    EXPECT_EQ(launch(folder.write("plain", "x")), "Permission denied");
    EXPECT_EQ(launch(folder.path()), "Permission denied");
    EXPECT_EQ(launch("/bin/true", folder / "missing"), "No such file or directory");
}

TEST(ProcessRunner, theTimeLimitStopsTheChild)
{
    const auto start = Clock::now();
    expectError(ConversionError::timedOut("sleeping"),
        [] { (void)ProcessRunner::run("/bin/sleep", {"30"}, {.timeout = 0.2, .label = "sleeping"}, {}); });
    EXPECT_GE(Clock::now() - start, 200ms);
    EXPECT_LT(Clock::now() - start, 5s);
}

TEST(ProcessRunner, aLimitThatNobodyCanWaitForIsNone)
{
    EXPECT_EQ(ProcessRunner::run("/bin/true", {}, {.timeout = 1e300, .label = "x"}, {}).status, 0);
}

TEST(ProcessRunner, streamsHeldOpenAfterTheChildsEndAreReadToTheirEnd)
{
    EXPECT_EQ(ProcessRunner::run(testProgram("late-closer"), {"150"}, {.timeout = 60, .label = "x"}, {}),
        (ProcessResult{7, "late", ""}));
}

TEST(ProcessRunner, streamsHeldOpenAfterTheChildsEndMeetTheTimeLimit)
{
    expectError(ConversionError::timedOut("x"),
        [] { (void)ProcessRunner::run(testProgram("late-closer"), {"60000"}, {.timeout = 0.2, .label = "x"}, {}); });
}

TEST(ProcessRunner, cancelledBeforeTheCallStartsNothing)
{
    const TemporaryFolder folder;
    std::stop_source source;
    source.request_stop();
    expectError(ConversionError::cancelled(), [&] {
        (void)ProcessRunner::run("/bin/sh", {"-c", "touch " + (folder / "started").string()},
            {.timeout = 60, .label = "x"}, source.get_token());
    });
    std::this_thread::sleep_for(50ms);
    EXPECT_TRUE(folder.names().empty());
}

TEST(ProcessRunner, aStopTakesEffectAtOnce)
{
    // The best of several, since the machine may be busy: the promise is ours, not the scheduler's.
    Clock::duration best = Clock::duration::max();
    for (int turn = 0; turn < 8; ++turn) {
        Running running("/bin/sleep", {"30"});
        std::this_thread::sleep_for(30ms);
        const auto asked = Clock::now();
        running.source.request_stop();
        EXPECT_EQ(running.error.get(), ConversionError::cancelled());
        best = std::min(best, running.end - asked);
    }
    EXPECT_LT(best, 20ms);
}

TEST(ProcessRunner, aStopReachesARunThatIsStillFeedingItsChild)
{
    Running running(testProgram("never-reads"), {"60000"}, 60, std::string(10U << 20U, 'x'));
    std::this_thread::sleep_for(50ms);
    running.source.request_stop();
    EXPECT_EQ(running.error.get(), ConversionError::cancelled());
}

TEST(ProcessRunner, aStopDuringTheLaunchEndsOnceAndLeavesNoChild)
{
    for (int turn = 0; turn < 60; ++turn) {
        Running running("/bin/sleep", {"30"});
        std::this_thread::sleep_for(std::chrono::microseconds(turn * 40));
        running.source.request_stop();
        EXPECT_EQ(running.error.get(), ConversionError::cancelled());
    }
    EXPECT_TRUE(waitUntil(5s, [] { return footprint().children == 0; }));
}

TEST(ProcessRunner, aStopAtTheMomentOfTheLimitYieldsOneOfTheTwo)
{
    for (int turn = 0; turn < 20; ++turn) {
        Running running("/bin/sleep", {"30"}, 0.03);
        std::this_thread::sleep_for(30ms);
        running.source.request_stop();
        const std::optional<ConversionError> error = running.error.get();
        EXPECT_TRUE(error == ConversionError::cancelled() || error == ConversionError::timedOut("label"));
    }
}

TEST(ProcessRunner, aChildThatIgnoresThePoliteRequestIsKilledThreeSecondsLater)
{
    const TemporaryFolder folder;
    Running running(testProgram("ignore-sigterm"), {folder / "pid"}, 60);
    const pid_t child = processNumberIn(folder / "pid");
    ASSERT_GT(child, 0);
    const auto asked = Clock::now();
    running.source.request_stop();
    EXPECT_EQ(running.error.get(), ConversionError::cancelled());
    EXPECT_LT(running.end - asked, 2s) << "the caller doesn't wait for the child";
    EXPECT_TRUE(isAlive(child));
    EXPECT_TRUE(waitUntil(6s, [child] { return !isAlive(child); }));
    EXPECT_GE(Clock::now() - asked, 2900ms);
    EXPECT_LT(Clock::now() - asked, 5s);
    EXPECT_TRUE(waitUntil(2s, [] { return footprint().children == 0; })) << "a zombie is left";
}

TEST(ProcessRunner, aTimeLimitKillsTheStubbornLikewise)
{
    const TemporaryFolder folder;
    Running running(testProgram("ignore-sigterm"), {folder / "pid"}, 0.5);
    const pid_t child = processNumberIn(folder / "pid");
    EXPECT_EQ(running.error.get(), ConversionError::timedOut("label"));
    EXPECT_TRUE(waitUntil(6s, [child] { return !isAlive(child); }));
}

TEST(ProcessRunner, whatAChildStartedEndsWithIt)
{
    const TemporaryFolder folder;
    Running running(testProgram("start-child"), {folder / "pid"});
    const pid_t grandchild = processNumberIn(folder / "pid");
    ASSERT_GT(grandchild, 0);
    EXPECT_TRUE(isAlive(grandchild));
    running.source.request_stop();
    EXPECT_EQ(running.error.get(), ConversionError::cancelled());
    EXPECT_TRUE(waitUntil(1s, [grandchild] { return !isAlive(grandchild); }));
}

TEST(ProcessRunner, whatAChildLeftBehindWithItsStreamsEndsAtTheLimit)
{
    const TemporaryFolder folder;
    expectError(ConversionError::timedOut("x"), [&] {
        // The shell ends, the sleeper holds the streams.
        (void)runShell("sleep 60 & echo $! > " + (folder / "pid").string(), {.timeout = 0.3, .label = "x"});
    });
    const pid_t sleeper = processNumberIn(folder / "pid");
    EXPECT_TRUE(waitUntil(1s, [sleeper] { return !isAlive(sleeper); }));
}

TEST(ProcessRunner, aChildInheritsNoDescriptorsAndDefaultSignals)
{
    const auto run = [](const char *program, std::vector<std::string> arguments) {
        return ProcessRunner::run(program, arguments, {.timeout = 60, .label = "x"}, {}).stdout;
    };
    // The fourth is the folder that ls reads.
    EXPECT_EQ(run("/bin/ls", {"/proc/self/fd"}), "0\n1\n2\n3\n");
    EXPECT_EQ(run("/bin/grep", {"SigBlk", "/proc/self/status"}), "SigBlk:\t0000000000000000\n");
    // The C library keeps signals 32 and 33 for itself.
    EXPECT_THAT(run("/bin/grep", {"SigIgn", "/proc/self/status"}),
        ::testing::MatchesRegex("SigIgn:\t0000000180000000\n|SigIgn:\t0000000000000000\n"));
}

TEST(ProcessRunner, aChildThatMakesTooLargeAFileIsKilled)
{
    const TemporaryFolder folder;
    const ProcessRunner::Options options{
        .currentDirectory = folder.path(), .timeout = 60, .label = "x", .largestFile = 1000};
    EXPECT_EQ(ProcessRunner::run("/bin/sh", {"-c", "head -c 1000 /dev/zero > fits; echo fine"}, options, {}),
        (ProcessResult{0, "fine\n", ""}));
    EXPECT_NE(ProcessRunner::run("/usr/bin/head", {"-c", "5000000", "/dev/zero"}, options, {}).stdout, "")
        << "streams aren't files";
    EXPECT_EQ(ProcessRunner::run("/bin/cp", {"/bin/sh", "copy"}, options, {}).status, SIGXFSZ);
    EXPECT_EQ(fs::file_size(folder / "copy"), 1000U);
}

TEST(ProcessRunner, concurrentRunsKeepTheirOutputsApart)
{
    std::vector<std::future<bool>> runs;
    for (int number = 0; number < 16; ++number) {
        runs.push_back(std::async(std::launch::async, [number] {
            const std::string text = std::to_string(number);
            return runShell("cat; printf " + text + " >&2", {.stdin = text, .timeout = 60, .label = "x"})
                == ProcessResult{0, text, text};
        }));
    }
    for (std::future<bool> &run : runs)
        EXPECT_TRUE(run.get());
}
