#include "Engine/ConversionQueue.h"

#include "Support/Processes.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <future>
#include <gtest/gtest.h>
#include <mutex>
#include <semaphore>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using namespace nolfa;
using namespace nolfa::testing;
using namespace std::chrono_literals;

namespace {

/// How an operation that was lined up ended.
enum class End { none, finished, failed, cancelled };

/// An operation that says when it starts, and runs until the test lets it go or its stop comes.
class Held {
public:
    [[nodiscard]] ConversionQueue::Operation operation()
    {
        return [this](const std::stop_token &stop) {
            m_started = true;
            const std::stop_callback wake(stop, [this] { m_gate.release(); });
            m_gate.acquire();
            throwIfStopped(stop);
            if (m_fails)
                throw std::runtime_error("broken");
        };
    }

    [[nodiscard]] ConversionQueue::Completion completion()
    {
        return [this](const std::exception_ptr &failure) {
            ++m_completions;
            m_end = endOf(failure);
        };
    }

    void enqueue(ConversionQueue &queue) { m_source = queue.enqueue(operation(), completion()); }
    void letGo() { m_gate.release(); }
    void fail()
    {
        m_fails = true;
        letGo();
    }
    void cancel() { m_source.request_stop(); }

    [[nodiscard]] bool hasStarted() const { return m_started; }
    [[nodiscard]] End end() const { return m_end; }
    [[nodiscard]] int completions() const { return m_completions; }
    [[nodiscard]] bool starts() const
    {
        return waitUntil(10s, [this] { return hasStarted(); });
    }
    [[nodiscard]] bool ends(End end) const
    {
        return waitUntil(10s, [this, end] { return m_end == end; });
    }

private:
    static End endOf(const std::exception_ptr &failure)
    {
        if (!failure)
            return End::finished;
        try {
            std::rethrow_exception(failure);
        } catch (const CancellationError &) {
            return End::cancelled;
        } catch (...) {
            return End::failed;
        }
    }

    std::counting_semaphore<> m_gate{0};
    std::atomic<bool> m_started = false;
    std::atomic<bool> m_fails = false;
    std::atomic<End> m_end = End::none;
    std::atomic<int> m_completions = 0;
    std::stop_source m_source;
};

/// The names of operations in the order in which they ran.
class Journal {
public:
    void add(int name)
    {
        const std::scoped_lock lock(m_mutex);
        m_names.push_back(name);
    }
    [[nodiscard]] ConversionQueue::Operation entry(int name)
    {
        return [this, name](const std::stop_token &) { add(name); };
    }
    [[nodiscard]] std::vector<int> names() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_names;
    }
    [[nodiscard]] bool reaches(std::size_t count) const
    {
        return waitUntil(20s, [this, count] { return names().size() == count; });
    }

private:
    mutable std::mutex m_mutex;
    std::vector<int> m_names;
};

void ignore(const std::exception_ptr & /*failure*/) { }

} // namespace

TEST(ConversionQueue, theThirdOfTwoSlotsStartsWhenOneOfTheFirstTwoEndedAndTheFourthAfterIt)
{
    std::vector<Held> held(4);
    ConversionQueue queue(2);
    for (Held &one : held)
        one.enqueue(queue);
    ASSERT_TRUE(held[0].starts() && held[1].starts());
    EXPECT_EQ(queue.running(), 2);
    EXPECT_EQ(queue.waiting(), 2U);
    EXPECT_FALSE(held[2].hasStarted());
    held[1].letGo();
    ASSERT_TRUE(held[2].starts());
    EXPECT_FALSE(held[3].hasStarted());
    EXPECT_EQ(held[0].end(), End::none);
    held[0].letGo();
    ASSERT_TRUE(held[3].starts());
    held[2].letGo();
    held[3].letGo();
    EXPECT_TRUE(held[2].ends(End::finished) && held[3].ends(End::finished));
    EXPECT_EQ(queue.running(), 0);
}

TEST(ConversionQueue, slotsAreGrantedInTheOrderOfArrivalAlsoToNewcomers)
{
    Held first;
    Journal journal;
    ConversionQueue queue(1);
    first.enqueue(queue);
    ASSERT_TRUE(first.starts());
    for (int name = 0; name < 50; ++name)
        (void)queue.enqueue(journal.entry(name), ignore);
    // The newcomer arrives while the slot is on its way from one to the next.
    std::jthread newcomer([&] {
        for (int name = 50; name < 100; ++name)
            (void)queue.enqueue(journal.entry(name), ignore);
    });
    first.letGo();
    ASSERT_TRUE(journal.reaches(100));
    const std::vector<int> names = journal.names();
    for (int name = 0; name < 100; ++name)
        EXPECT_EQ(names[static_cast<std::size_t>(name)], name);
}

TEST(ConversionQueue, aBlockedCallerAndALinedUpOperationStandInTheSameLine)
{
    Held first;
    Journal journal;
    ConversionQueue queue(1);
    first.enqueue(queue);
    ASSERT_TRUE(first.starts());
    (void)queue.enqueue(journal.entry(1), ignore);
    std::jthread caller([&] { queue.run(journal.entry(2), {}); });
    ASSERT_TRUE(waitUntil(10s, [&] { return queue.waiting() == 2; }));
    (void)queue.enqueue(journal.entry(3), ignore);
    first.letGo();
    ASSERT_TRUE(journal.reaches(3));
    EXPECT_EQ(journal.names(), (std::vector<int>{1, 2, 3}));
}

TEST(ConversionQueue, cancellingAWaiterInTheMiddleRemovesOnlyThatOne)
{
    Held first;
    Held middle;
    Journal journal;
    ConversionQueue queue(1);
    first.enqueue(queue);
    (void)queue.enqueue(journal.entry(1), ignore);
    middle.enqueue(queue);
    (void)queue.enqueue(journal.entry(2), ignore);
    (void)queue.enqueue(journal.entry(3), ignore);
    middle.cancel();
    EXPECT_EQ(middle.end(), End::cancelled) << "the wait ends at once";
    EXPECT_EQ(queue.waiting(), 3U);
    first.letGo();
    ASSERT_TRUE(journal.reaches(3));
    EXPECT_EQ(journal.names(), (std::vector<int>{1, 2, 3}));
    EXPECT_FALSE(middle.hasStarted());
    EXPECT_EQ(middle.completions(), 1);
}

TEST(ConversionQueue, cancellingAWaiterTakesNoSlotAndLeavesRunningUnchanged)
{
    Held first;
    Held second;
    Held third;
    ConversionQueue queue(1);
    first.enqueue(queue);
    second.enqueue(queue);
    ASSERT_TRUE(first.starts());
    second.cancel();
    EXPECT_EQ(queue.running(), 1);
    first.letGo();
    ASSERT_TRUE(first.ends(End::finished));
    EXPECT_EQ(queue.running(), 0);
    third.enqueue(queue);
    EXPECT_TRUE(third.starts());
    third.letGo();
}

TEST(ConversionQueue, anOperationThatFailsGivesItsSlotToTheNextInLine)
{
    Held first;
    Held second;
    ConversionQueue queue(1);
    first.enqueue(queue);
    second.enqueue(queue);
    first.fail();
    EXPECT_TRUE(second.starts());
    EXPECT_TRUE(first.ends(End::failed));
    second.letGo();
}

TEST(ConversionQueue, aSlotHandedOverLeavesRunningUnchanged)
{
    std::vector<Held> held(3);
    ConversionQueue queue(1);
    for (Held &one : held)
        one.enqueue(queue);
    for (Held &one : held) {
        ASSERT_TRUE(one.starts());
        EXPECT_EQ(queue.running(), 1);
        one.letGo();
    }
    EXPECT_TRUE(held[2].ends(End::finished));
    EXPECT_EQ(queue.running(), 0);
}

TEST(ConversionQueue, theSlotIsFreeBeforeTheResultIsTold)
{
    std::promise<int> running;
    ConversionQueue queue(1);
    (void)queue.enqueue(
        [](const std::stop_token &) {}, [&](const std::exception_ptr &) { running.set_value(queue.running()); });
    EXPECT_EQ(running.get_future().get(), 0);
}

TEST(ConversionQueue, aCallerStoppedBeforehandNeverStartsItsOperation)
{
    ConversionQueue queue(1);
    std::stop_source source;
    source.request_stop();
    bool ran = false;
    EXPECT_THROW(queue.run([&](const std::stop_token &) { ran = true; }, source.get_token()), CancellationError);
    EXPECT_FALSE(ran);
    EXPECT_EQ(queue.running(), 0);
}

TEST(ConversionQueue, aBlockedCallerLeavesTheLineWhenItIsStopped)
{
    Held first;
    ConversionQueue queue(1);
    first.enqueue(queue);
    std::stop_source source;
    std::atomic<bool> wasCancelled = false;
    std::jthread caller([&] {
        try {
            queue.run([](const std::stop_token &) { ADD_FAILURE() << "started"; }, source.get_token());
        } catch (const CancellationError &) {
            wasCancelled = true;
        }
    });
    ASSERT_TRUE(waitUntil(10s, [&] { return queue.waiting() == 1; }));
    source.request_stop();
    caller.join();
    EXPECT_TRUE(wasCancelled);
    EXPECT_EQ(queue.waiting(), 0U);
    first.letGo();
}

TEST(ConversionQueue, runReturnsWhatTheOperationReturnsAndPassesItsFailureUnchanged)
{
    ConversionQueue queue(1);
    EXPECT_EQ(queue.run([](const std::stop_token &) { return std::string("done"); }, {}), "done");
    EXPECT_THROW(queue.run([](const std::stop_token &) { throw std::out_of_range("mine"); }, {}), std::out_of_range);
    EXPECT_EQ(queue.running(), 0);
    // Its slot came back.
    EXPECT_EQ(queue.run([](const std::stop_token &) { return 1; }, {}), 1);
}

TEST(ConversionQueue, aStopReachesTheOperationThatRuns)
{
    Held held;
    ConversionQueue queue(1);
    held.enqueue(queue);
    ASSERT_TRUE(held.starts());
    held.cancel();
    EXPECT_TRUE(held.ends(End::cancelled));
}

TEST(ConversionQueue, withoutSlotsEverybodyWaitsUntilCancelled)
{
    for (const int slots : {0, -1}) {
        Held held;
        ConversionQueue queue(slots);
        held.enqueue(queue);
        EXPECT_EQ(queue.waiting(), 1U);
        EXPECT_EQ(queue.running(), 0);
        held.cancel();
        EXPECT_EQ(held.end(), End::cancelled);
    }
}

TEST(ConversionQueue, destructionCancelsWaitersAndStopsWhatRuns)
{
    std::vector<Held> held(4);
    {
        ConversionQueue queue(2);
        for (Held &one : held)
            one.enqueue(queue);
        ASSERT_TRUE(held[0].starts() && held[1].starts());
    }
    for (const Held &one : held)
        EXPECT_EQ(one.end(), End::cancelled);
    EXPECT_FALSE(held[2].hasStarted() || held[3].hasStarted());
}

TEST(ConversionQueue, tenThousandWaitersCostNoThread)
{
    constexpr int count = 10'000;
    std::thread([] {}).join();
    const std::size_t threads = footprint().threads;
    Held first;
    Held second;
    Journal journal;
    ConversionQueue queue(2);
    first.enqueue(queue);
    second.enqueue(queue);
    for (int name = 0; name < count; ++name)
        (void)queue.enqueue(journal.entry(name), ignore);
    EXPECT_EQ(queue.waiting(), static_cast<std::size_t>(count));
    EXPECT_LE(footprint().threads, threads + 2);
    first.letGo();
    ASSERT_TRUE(journal.reaches(count));
    // One slot only was free: the order shows.
    const std::vector<int> names = journal.names();
    EXPECT_TRUE(std::ranges::is_sorted(names));
    second.letGo();
}

TEST(ConversionQueue, stopsAndGrantsThatMeetEndEachOperationExactlyOnce)
{
    constexpr int count = 2'000;
    std::atomic<int> completions = 0;
    std::atomic<int> highest = 0;
    std::atomic<int> inside = 0;
    {
        ConversionQueue queue(3);
        std::vector<std::stop_source> sources;
        for (int index = 0; index < count; ++index) {
            sources.push_back(queue.enqueue(
                [&](const std::stop_token &) {
                    const int now = ++inside;
                    int before = highest;
                    while (before < now && !highest.compare_exchange_weak(before, now)) { }
                    std::this_thread::yield();
                    --inside;
                },
                [&](const std::exception_ptr &) { ++completions; }));
        }
        std::jthread other([&] {
            for (std::size_t index = 0; index < sources.size(); index += 2)
                sources[index].request_stop();
        });
        for (std::size_t index = sources.size(); index-- > 0;)
            sources[index].request_stop();
    }
    EXPECT_EQ(completions, count);
    EXPECT_LE(highest, 3);
}
