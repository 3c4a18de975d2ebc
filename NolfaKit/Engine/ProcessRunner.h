#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace nolfa {

struct ProcessResult {
    std::int32_t status; ///< the exit status, or the number of the signal that killed the child
    std::string stdout; ///< all that the child wrote, as bytes
    std::string stderr;

    bool operator==(const ProcessResult &) const = default;
};

/// The one way to start an external program. Thread-safe.
namespace ProcessRunner {

struct Options {
    std::optional<std::string_view> stdin = std::nullopt; ///< absent: the child inherits ours
    std::optional<std::filesystem::path> currentDirectory = std::nullopt;
    /// "NAME=value" each; stand before what the child inherits of our own.
    std::vector<std::string> environment = {};
    double timeout; ///< seconds, counted from the moment when the input was taken
    std::string label = {}; ///< the name of the step in ConversionError::timedOut
    /// Bytes; a child that makes a larger file is killed by SIGXFSZ. Absent: no limit.
    std::optional<std::uint64_t> largestFile = std::nullopt;
};

/// Blocks until the child ended and both its output streams were read to their end. A status that is not zero is no
/// failure here. A child that is stopped gets SIGTERM with its whole process group, and SIGKILL three seconds later
/// if it still runs; the caller doesn't wait for that.
/// @param executable  absolute path
/// @throws ConversionError: @c timedOut, @c cancelled (nothing is started after a stop), or @c engineFailure with
///         the system's description of why the program didn't start
ProcessResult run(const std::filesystem::path &executable, const std::vector<std::string> &arguments,
    const Options &options, const std::stop_token &stop);

} // namespace ProcessRunner

} // namespace nolfa
