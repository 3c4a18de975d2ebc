#pragma once

#include <array>
#include <stop_token>
#include <string>
#include <string_view>

namespace nolfa {

/// When two texts count as the same: folding makes them equal. Pure and thread-safe; any bytes will do.
namespace TextFold {

/// What Markdown emphasises with.
inline constexpr std::array emphasisMarkers{'*', '_', '`', '~'};

/// @param ignoreWhitespace         runs of whitespace become one blank
/// @param ignoreCase               everything is lower-cased, by the full rules of Unicode
/// @param ignoreFormattingMarkers  the emphasis markers go, wherever they stand
/// @return the text without what is to be ignored, and always without whitespace and newlines at its ends
/// @throws CancellationError after a stop, soon also in a long text
[[nodiscard]] std::string fold(std::string_view text, bool ignoreWhitespace, bool ignoreCase,
    bool ignoreFormattingMarkers, const std::stop_token &stop = {});

/// fold() with everything ignored.
[[nodiscard]] std::string loose(std::string_view text, const std::stop_token &stop = {});

} // namespace TextFold

} // namespace nolfa
