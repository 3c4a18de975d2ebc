#pragma once

#include "Platform/PDFDocument.h"

#include <stop_token>
#include <vector>

namespace nolfa {

/// The text layer of a whole PDF.
namespace PDFTextPages {

/// Reads the pages on all processors, each with an opening of its own. Thread-safe. Blocks.
/// @param document  not locked
/// @return the lines of each page; none for a page that can't be read
/// @throws CancellationError after a stop; ConversionError::engineFailure for text beyond ReadingLimits::keptText
[[nodiscard]] std::vector<std::vector<PDFTextLine>> read(const PDFDocument &document, const std::stop_token &stop);

} // namespace PDFTextPages

} // namespace nolfa
