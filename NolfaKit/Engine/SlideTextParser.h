#pragma once

#include <filesystem>
#include <stop_token>
#include <string>
#include <vector>

namespace nolfa {

/// The text of a slide or of its notes. Thread-safe: no shared state.
namespace SlideTextParser {

/// The paragraphs that hold something, trimmed, in document order; the runs of each joined directly.
/// A part that can't be opened has none, a malformed one those before the error.
/// @throws ConversionError when the text is too large, CancellationError
[[nodiscard]] std::vector<std::string> parse(const std::filesystem::path &part, const std::stop_token &stop);

} // namespace SlideTextParser

} // namespace nolfa
