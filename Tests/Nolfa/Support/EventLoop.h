#pragma once

#include <QCoreApplication>
#include <chrono>
#include <functional>
#include <thread>

namespace nolfa::testing {

/// The application that events need, without a window; made at the first call, on the thread that the tests run on.
inline void ensureApplication()
{
    static int count = 1;
    static char name[] = "test";
    static char *arguments[] = {name, nullptr};
    [[maybe_unused]] static const auto *const application = new QCoreApplication(count, arguments);
}

/// Handles events until a condition holds.
/// @return whether it came to hold in time
[[nodiscard]] inline bool spinUntil(
    const std::function<bool()> &condition, std::chrono::milliseconds limit = std::chrono::seconds(30))
{
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents();
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    return true;
}

} // namespace nolfa::testing
