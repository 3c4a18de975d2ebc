#pragma once

#include "Watermark/WatermarkSpec.h"

#include <cstddef>
#include <filesystem>
#include <stop_token>
#include <string>

namespace nolfa {

/// Stamps a watermark on copies of a PDF's pages. What a page shows goes over as it is stored; annotations, links and
/// form fields stay behind. The saved copy and the preview come out of the same work, so that one shows exactly what
/// the other will be. Blocks; thread-safe, with nothing shared between calls.
namespace WatermarkRenderer {

/// Writes the whole document. The new file takes its place once it is complete; until then, and after a failure, what
/// stood there stays as it is. The input itself is refused as the place.
/// @throws ConversionError::unreadableInput, passwordProtected, engineFailure; std::filesystem::filesystem_error when
///         the disc can't take it; CancellationError after a stop
void render(const std::filesystem::path &input, const std::filesystem::path &to, const WatermarkSpec &spec,
    const std::stop_token &stop = {});

/// A PDF of one page: the one at an index, stamped if @p spec selects it.
/// @param index  from 0
/// @return the file's bytes
/// @throws ConversionError as render(), and engineFailure for a page past the end; CancellationError after a stop
[[nodiscard]] std::string previewPage(
    std::size_t index, const std::filesystem::path &of, const WatermarkSpec &spec, const std::stop_token &stop = {});

} // namespace WatermarkRenderer

} // namespace nolfa
