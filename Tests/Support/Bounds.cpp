#include "Support/Bounds.h"

#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/resource.h>

/// AddressSanitizer's; keeps nothing back of what was freed. Absent in other builds.
extern "C" [[gnu::weak]] void __sanitizer_purge_allocator();

namespace nolfa::testing {

namespace {

#ifdef __SANITIZE_THREAD__
constexpr long allowance = 8;
#else
constexpr long allowance = 1;
#endif

constexpr long kilobytes = 1024;

long ownPeak()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:"))
            return std::stol(line.substr(line.find_first_of("0123456789")));
    }
    ADD_FAILURE() << "no peak to be read";
    return 0;
}

} // namespace

Bounds::Bounds(std::chrono::seconds time, long megabytes)
    : m_time(time)
    , m_mostMemory(megabytes * kilobytes * allowance)
{
    if (__sanitizer_purge_allocator != nullptr)
        __sanitizer_purge_allocator();
    // From now on the peak is counted anew; where the system doesn't offer that, it is that of the whole process.
    std::ofstream("/proc/self/clear_refs") << "5";
}

Bounds::~Bounds()
{
    EXPECT_LT(std::chrono::steady_clock::now() - m_start, m_time);
    EXPECT_LE(ownPeak(), m_mostMemory);
    rusage children{};
    EXPECT_EQ(::getrusage(RUSAGE_CHILDREN, &children), 0);
    EXPECT_LE(children.ru_maxrss, m_mostMemory);
}

} // namespace nolfa::testing
