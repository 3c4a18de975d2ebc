#pragma once

#include "Compare/DocumentComparison.h"

#include <filesystem>
#include <optional>
#include <string>

namespace nolfa::CommandLine::ComparisonJSON {

/// A comparison for programs, in the shape that docs/comparison-json.md describes.
/// @param report  where a report of it was written
[[nodiscard]] std::string text(
    const DocumentComparison &comparison, const std::optional<std::filesystem::path> &report);

} // namespace nolfa::CommandLine::ComparisonJSON
