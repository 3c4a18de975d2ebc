#pragma once

#include "Platform/Bundle.h"

#include <filesystem>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace nolfa {

/// Runs one pandoc. An immutable value; thread-safe.
struct PandocRunner {
    std::filesystem::path binaryURL; ///< absolute
    double timeLimit = 120; ///< seconds for one run

    /// Where a pandoc may stand that isn't ours, in order of preference.
    static std::span<const std::filesystem::path> systemPlaces();

    /// The bundle's own pandoc, or else the first of @p places that names an executable file. No version is checked.
    [[nodiscard]] static std::optional<PandocRunner> resolve(
        const Bundle &bundle, std::span<const std::filesystem::path> places = systemPlaces());

    /// Blocks, for timeLimit at most.
    /// @param stdin             absent: the child inherits ours
    /// @param currentDirectory  where relative links of a text without a file name lead from
    /// @param environment       "NAME=value" each, before what the child inherits
    /// @return pandoc's standard output
    /// @throws ConversionError as ProcessRunner::run, and @c toolFailure on a status other than zero
    std::string run( // NOLINT(modernize-use-nodiscard): most callers want the file, not the output
        const std::vector<std::string> &arguments, std::optional<std::string_view> stdin, const std::stop_token &stop,
        const std::optional<std::filesystem::path> &currentDirectory = std::nullopt,
        const std::vector<std::string> &environment = {}) const;

    /// What "--version" prints; empty when that isn't UTF-8.
    [[nodiscard]] std::string version(const std::stop_token &stop) const;

    bool operator==(const PandocRunner &) const = default;
};

} // namespace nolfa
