#pragma once

#include <exception>
#include <stop_token>

namespace nolfa {

/// Work ended because its stop token asked for it. Carries nothing and is never shown.
class CancellationError : public std::exception {
public:
    [[nodiscard]] const char *what() const noexcept override { return "cancelled"; }
};

/// @throws CancellationError when @p stop was requested.
inline void throwIfStopped(const std::stop_token &stop)
{
    if (stop.stop_requested())
        throw CancellationError();
}

} // namespace nolfa
