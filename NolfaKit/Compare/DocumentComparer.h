#pragma once

#include "Compare/BlockAligner.h"
#include "Compare/DocumentComparison.h"
#include "Engine/ConversionService.h"

#include <filesystem>
#include <stop_token>

namespace nolfa {

/// The one door to comparison: two documents of any format that can be read are brought to Markdown, cut into blocks,
/// aligned, and what changed is put under the headings and pages where it stands.
namespace DocumentComparer {

/// Blocks; call it on a background thread. Writes nowhere but in a Scratch of its own.
/// @throws ConversionError (cancelled after a stop), and whatever else a converter lets through
[[nodiscard]] DocumentComparison compare(const std::filesystem::path &left, const std::filesystem::path &right,
    const ConversionService &service, const ComparisonOptions &options = {}, const std::stop_token &stop = {});

/// An alignment in numbers. Pure and thread-safe.
/// @param totalWords  of both documents
[[nodiscard]] ComparisonSummary summarize(const BlockAligner::Result &result, std::size_t totalWords);

} // namespace DocumentComparer

} // namespace nolfa
