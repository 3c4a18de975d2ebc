#pragma once

#include "Compare/ComparisonOptions.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace nolfa {

/// A word with its punctuation. Equal to another when the keys are, whatever the texts.
struct WordToken {
    std::string text; ///< as it stands in the document
    std::string key; ///< what comparison looks at

    bool operator==(const WordToken &other) const { return key == other.key; }
};

/// Cuts text into words: runs without whitespace, cut where a letter or digit follows punctuation that itself follows
/// one, unless that is a single apostrophe or hyphen. Pure and thread-safe; any bytes will do.
namespace WordTokenizer {

/// In the order of the text.
[[nodiscard]] std::vector<std::string> raw(std::string_view text);

/// As raw(), with the keys that the options ask for.
[[nodiscard]] std::vector<WordToken> tokens(std::string_view text, const ComparisonOptions &options);

/// How many raw() has. The options have no say in it.
[[nodiscard]] std::size_t count(std::string_view text, const ComparisonOptions &options = {});

/// The key of one of raw(): never empty, since a word of markers alone stands for itself.
[[nodiscard]] std::string key(std::string_view word, const ComparisonOptions &options);

} // namespace WordTokenizer

} // namespace nolfa

/// As equality: by the key alone.
template <> struct std::hash<nolfa::WordToken> {
    std::size_t operator()(const nolfa::WordToken &token) const noexcept { return std::hash<std::string>()(token.key); }
};
