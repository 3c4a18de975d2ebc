#pragma once

#include "Compare/BlockAligner.h"
#include "Compare/MyersDiff.h"

#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

/// The algorithms of the comparison once more, step by step and without any thought of speed, to hold the real ones
/// against; and random input for both.
namespace nolfa::testing {

[[nodiscard]] std::vector<std::string> plainCharacters(const std::string &text);

[[nodiscard]] std::string plainFold(
    const std::string &text, bool ignoreWhitespace, bool ignoreCase, bool ignoreFormattingMarkers);

[[nodiscard]] std::vector<std::string> plainWords(const std::string &text);

[[nodiscard]] std::vector<std::string> plainKeys(const std::string &text, const ComparisonOptions &options);

/// Keeps every pass whole.
[[nodiscard]] std::vector<DiffOperation> plainOperations(const std::vector<std::string> &left,
    const std::vector<std::string> &right, std::optional<std::int64_t> maxD = std::nullopt);

[[nodiscard]] BlockAligner::Result plainAlign(
    const std::vector<Block> &left, const std::vector<Block> &right, const ComparisonOptions &options);

/// The characters that aren't whitespace.
[[nodiscard]] std::string withoutWhitespace(const std::string &text);

/// Code points of all the kinds that matter to words.
[[nodiscard]] std::string randomText(std::mt19937 &random, std::size_t length);

[[nodiscard]] ComparisonOptions randomOptions(std::mt19937 &random);

} // namespace nolfa::testing
