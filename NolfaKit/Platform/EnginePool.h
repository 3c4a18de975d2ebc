#pragma once

#include "Platform/CancellationError.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <list>
#include <memory>
#include <mutex>
#include <set>
#include <stop_token>
#include <string>
#include <utility>

namespace nolfa {

/// Engines that are dear to start and serve one caller at a time: kept for the next caller who wants the same kind.
/// No more than a fixed number exist at once. Thread-safe; engines are made and destroyed outside of its lock.
template <typename Engine> class EnginePool {
public:
    /// @param most  at least 1
    explicit EnginePool(std::size_t most)
        : m_most(most)
    {
    }

    /// An engine that goes back to the pool with the object.
    class Lease {
    public:
        Lease(EnginePool &pool, std::string key, std::unique_ptr<Engine> engine)
            : m_pool(pool)
            , m_key(std::move(key))
            , m_engine(std::move(engine))
        {
        }
        Lease(const Lease &) = delete;
        Lease &operator=(const Lease &) = delete;
        ~Lease() { m_pool.giveBack(std::move(m_key), std::move(m_engine)); }

        Engine &operator*() const { return *m_engine; }
        Engine *operator->() const { return m_engine.get(); }

    private:
        EnginePool &m_pool;
        std::string m_key;
        std::unique_ptr<Engine> m_engine;
    };

    /// Waits while all engines are at work.
    /// @param patience  how long to wait for an engine of the kind that is at work before another one is made; what
    ///                  jobs take that are smaller than making one
    /// @param make      makes an engine of that kind; may throw
    /// @throws CancellationError after a stop
    template <typename Make>
    Lease lease(const std::string &key, std::chrono::milliseconds patience, const std::stop_token &stop, Make make)
    {
        std::unique_ptr<Engine> engine = takeOrReserve(key, patience, stop);
        if (!engine) {
            try {
                engine = make();
            } catch (...) {
                giveUpReservation(key);
                throw;
            }
        }
        return {*this, key, std::move(engine)};
    }

private:
    using Idle = std::pair<std::string, std::unique_ptr<Engine>>;

    /// An idle engine of the kind, or nothing and the right to make one.
    std::unique_ptr<Engine> takeOrReserve(
        const std::string &key, std::chrono::milliseconds patience, const std::stop_token &stop)
    {
        Idle surplus;
        std::unique_lock lock(m_mutex);
        const auto isIdle = [&] { return std::ranges::find(m_idle, key, &Idle::first) != m_idle.end(); };
        if (!isIdle() && m_atWork.contains(key))
            m_changed.wait_for(lock, stop, patience, isIdle);
        if (!m_changed.wait(lock, stop, [this] { return !m_idle.empty() || m_count < m_most; }))
            throw CancellationError();
        m_atWork.insert(key);
        const auto found = std::ranges::find(m_idle, key, &Idle::first);
        if (found != m_idle.end()) {
            std::unique_ptr<Engine> engine = std::move(found->second);
            m_idle.erase(found);
            return engine;
        }
        if (m_count < m_most) {
            ++m_count;
            return nullptr;
        }
        // The one that has been idle longest makes room.
        surplus = std::move(m_idle.front());
        m_idle.pop_front();
        lock.unlock();
        surplus.second.reset();
        return nullptr;
    }

    void giveBack(std::string key, std::unique_ptr<Engine> engine)
    {
        {
            const std::scoped_lock lock(m_mutex);
            m_atWork.erase(m_atWork.find(key));
            m_idle.emplace_back(std::move(key), std::move(engine));
        }
        // Those who wait may want different kinds.
        m_changed.notify_all();
    }

    void giveUpReservation(const std::string &key)
    {
        {
            const std::scoped_lock lock(m_mutex);
            m_atWork.erase(m_atWork.find(key));
            --m_count;
        }
        m_changed.notify_all();
    }

    const std::size_t m_most;
    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    std::list<Idle> m_idle; ///< the one that has been idle longest first
    std::multiset<std::string> m_atWork; ///< kinds, those about to be made included
    std::size_t m_count = 0; ///< idle, at work, and about to be made
};

} // namespace nolfa
