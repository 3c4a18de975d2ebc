#pragma once

#include "Engine/ProcessRunner.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

namespace nolfa::testing {

/// One of the programs of Tests/Support/Programs.
[[nodiscard]] std::filesystem::path testProgram(std::string_view name);

/// Our own command line.
[[nodiscard]] std::filesystem::path commandLineProgram();

/// Runs a program to its end, with variables for its environment ("NAME=value") and in a folder, if given.
[[nodiscard]] ProcessResult runProgram(const std::filesystem::path &program, std::vector<std::string> arguments,
    const std::vector<std::string> &environment = {},
    const std::optional<std::filesystem::path> &folder = std::nullopt);

[[nodiscard]] bool isAlive(pid_t process);

/// The command lines of all processes, by number; arguments each end in a blank. Processes come and go meanwhile.
[[nodiscard]] std::map<pid_t, std::string> commandLines();

/// What this process has open, and who it has begotten.
struct Footprint {
    std::size_t descriptors;
    std::size_t threads;
    std::size_t children; ///< zombies included
    bool operator==(const Footprint &) const = default;
};
[[nodiscard]] Footprint footprint();

/// Waits until a condition holds, looking every few milliseconds.
/// @return whether it came to hold in time
[[nodiscard]] bool waitUntil(std::chrono::milliseconds limit, const std::function<bool()> &condition);

/// The number that a test program wrote to a file, once it is there.
[[nodiscard]] pid_t processNumberIn(const std::filesystem::path &file);

} // namespace nolfa::testing
