#pragma once

#include "Engine/ConversionError.h"
#include "Platform/CancellationError.h"

#include <concepts>
#include <exception>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>

namespace nolfa {

namespace TimeLimit {

/// What ended first.
enum class Outcome { finished, timedOut, cancelled };

/// Runs @p operation on a thread of its own until it ends, whatever happens; asks it to stop when the limit runs out
/// or @p stop is requested. @p operation must not throw.
Outcome race(
    double seconds, const std::stop_token &stop, const std::function<void(const std::stop_token &)> &operation);

} // namespace TimeLimit

/// Gives @p operation, which has no limit of its own, a time limit. Blocks, and returns only once the operation has
/// ended, so that no work outlives the call: one that ignores its stop token keeps the caller beyond the limit, and
/// its result is dropped.
/// @param seconds    fixed and positive; a number that is no time span stops the process
/// @param label      names the step in the user's language
/// @param operation  takes a stop token; runs on another thread
/// @throws ConversionError::timedOut, CancellationError when @p stop came first, or the operation's own failure
template <std::invocable<const std::stop_token &> Operation>
auto withTimeout(double seconds, const std::string &label, const std::stop_token &stop, Operation &&operation)
{
    using Result = std::invoke_result_t<Operation, const std::stop_token &>;
    using Stored = std::conditional_t<std::is_void_v<Result>, std::monostate, Result>;
    std::optional<Stored> result;
    std::exception_ptr failure;
    const TimeLimit::Outcome outcome = TimeLimit::race(seconds, stop, [&](const std::stop_token &operationStop) {
        try {
            if constexpr (std::is_void_v<Result>) {
                operation(operationStop);
                result.emplace();
            } else {
                result.emplace(operation(operationStop));
            }
        } catch (...) {
            failure = std::current_exception();
        }
    });
    if (outcome == TimeLimit::Outcome::timedOut)
        throw ConversionError::timedOut(label);
    if (outcome == TimeLimit::Outcome::cancelled)
        throw CancellationError();
    if (failure)
        std::rethrow_exception(failure);
    if constexpr (!std::is_void_v<Result>)
        return std::move(*result);
}

} // namespace nolfa
