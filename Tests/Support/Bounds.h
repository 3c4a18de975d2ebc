#pragma once

#include <chrono>

namespace nolfa::testing {

/// Watches over what hostile input may take from its construction to its end: time, and memory in this process, all
/// that stood before included, or in any child so far. The test fails when it is more.
///
/// ThreadSanitizer keeps a history of every word in use, several times its size: there memory may be eight times as
/// much.
class Bounds {
public:
    explicit Bounds(std::chrono::seconds time = std::chrono::seconds(10), long megabytes = 512);
    Bounds(const Bounds &) = delete;
    Bounds &operator=(const Bounds &) = delete;
    ~Bounds();

private:
    std::chrono::seconds m_time;
    long m_mostMemory; ///< KB
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

} // namespace nolfa::testing
