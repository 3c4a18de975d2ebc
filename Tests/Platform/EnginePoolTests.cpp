#include "Platform/EnginePool.h"

#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>
#include <vector>

using namespace nolfa;
using namespace std::chrono_literals;

namespace {

/// An engine that knows what kind it is, and how many of them there are.
struct Engine {
    explicit Engine(std::string kindOfIt)
        : kind(std::move(kindOfIt))
    {
        ++alive;
        ++made;
    }
    ~Engine() { --alive; }
    Engine(const Engine &) = delete;
    Engine &operator=(const Engine &) = delete;

    std::string kind;
    static inline std::atomic<int> alive = 0;
    static inline std::atomic<int> made = 0;
};

auto maker(const std::string &kind)
{
    return [kind] { return std::make_unique<Engine>(kind); };
}

} // namespace

TEST(EnginePool, keepsEnginesForTheNextCallerOfTheKind)
{
    EnginePool<Engine> pool(2);
    const int before = Engine::made;
    for (int round = 0; round < 3; ++round)
        EXPECT_EQ(pool.lease("a", {}, {}, maker("a"))->kind, "a");
    EXPECT_EQ(Engine::made, before + 1);
}

TEST(EnginePool, anotherKindTakesThePlaceOfTheOneIdleLongest)
{
    EnginePool<Engine> pool(2);
    const int before = Engine::alive;
    (void)pool.lease("a", {}, {}, maker("a"));
    (void)pool.lease("b", {}, {}, maker("b"));
    (void)pool.lease("c", {}, {}, maker("c"));
    EXPECT_EQ(Engine::alive, before + 2);
    const int made = Engine::made;
    (void)pool.lease("b", {}, {}, maker("b"));
    EXPECT_EQ(Engine::made, made);
    (void)pool.lease("a", {}, {}, maker("a"));
    EXPECT_EQ(Engine::made, made + 1);
}

TEST(EnginePool, aFailureToMakeAnEngineLeavesItsPlaceToOthers)
{
    EnginePool<Engine> pool(1);
    const auto fail = []() -> std::unique_ptr<Engine> { throw std::runtime_error("no"); };
    EXPECT_THROW((void)pool.lease("a", {}, {}, fail), std::runtime_error);
    EXPECT_EQ(pool.lease("a", {}, {}, maker("a"))->kind, "a");
}

TEST(EnginePool, noMoreThanItsNumberAreAtWorkAtOnce)
{
    EnginePool<Engine> pool(3);
    std::atomic<int> now = 0;
    std::atomic<int> most = 0;
    {
        std::vector<std::jthread> threads;
        for (int index = 0; index < 12; ++index) {
            threads.emplace_back([&, index] {
                const std::string kind(1, static_cast<char>('a' + index % 4));
                const auto engine = pool.lease(kind, {}, {}, maker(kind));
                EXPECT_EQ(engine->kind, kind);
                const int count = ++now;
                for (int seen = most; seen < count && !most.compare_exchange_weak(seen, count);) { }
                std::this_thread::sleep_for(2ms);
                --now;
            });
        }
    }
    EXPECT_LE(most, 3);
    EXPECT_GE(most, 1);
}

TEST(EnginePool, aStopEndsTheWaitForAnEngine)
{
    EnginePool<Engine> pool(1);
    const auto held = pool.lease("a", {}, {}, maker("a"));
    std::stop_source source;
    std::jthread stopper([&source] {
        std::this_thread::sleep_for(20ms);
        source.request_stop();
    });
    EXPECT_THROW((void)pool.lease("a", {}, source.get_token(), maker("a")), CancellationError);
}

TEST(EnginePool, whoIsPatientTakesTheEngineThatComesBackInsteadOfAnother)
{
    EnginePool<Engine> pool(2);
    int made = 0;
    const auto make = [&made] {
        ++made;
        return std::make_unique<Engine>("a");
    };
    std::jthread patient;
    {
        const auto held = pool.lease("a", {}, {}, make);
        patient = std::jthread([&] { (void)pool.lease("a", 60s, {}, make); });
        std::this_thread::sleep_for(50ms);
        EXPECT_EQ(made, 1);
        (void)pool.lease("a", {}, {}, make);
        EXPECT_EQ(made, 2) << "who isn't has another one made";
    }
    patient.join();
    EXPECT_EQ(made, 2);
}
