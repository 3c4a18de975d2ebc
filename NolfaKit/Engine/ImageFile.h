#pragma once

#include "Platform/PictureSource.h"

#include <filesystem>
#include <optional>
#include <stop_token>

namespace nolfa {

/// Decoded pictures from files: PNG and JPEG, whatever their names say, and what else the system reads. Thread-safe.
namespace ImageFile {

/// Decodes the file straight to a bounded size, with its orientation applied; a picture is never enlarged. What the
/// decoder makes of damaged data is the result; what it refuses is unreadable.
/// Blocks; call it on a background thread.
/// @param maxPixelSize  upper limit of the longer side, in pixels; absent keeps the size
/// @throws ConversionError::unreadableInput; CancellationError after a stop
[[nodiscard]] Bitmap load(
    const std::filesystem::path &url, std::optional<int> maxPixelSize, const std::stop_token &stop);

/// The decoding behind load().
/// @param url  names the file in a failure
[[nodiscard]] Bitmap loadSync(PictureSource &source, const std::filesystem::path &url, std::optional<int> maxPixelSize);

/// The bytes of a picture file.
/// @throws ConversionError::unreadableInput when it can't be read, is larger than 256 MiB, or would take more time or
///         memory to decode than any honest picture of its size
[[nodiscard]] std::string read(const std::filesystem::path &url);

} // namespace ImageFile

} // namespace nolfa
