#pragma once

#include <filesystem>
#include <stop_token>
#include <string>

namespace nolfa {

/// Tolerant reading of text. Thread-safe.
namespace TextFile {

/// Strict UTF-8 (a byte-order mark stays in the text), else UTF-16 or UTF-32 by its mark, else ISO Latin 1.
/// @return UTF-8
/// @throws ConversionError::unreadableInput when the file can't be read, or is larger than a gibibyte;
///         CancellationError after a stop
[[nodiscard]] std::string read(const std::filesystem::path &url, const std::stop_token &stop = {});

} // namespace TextFile

} // namespace nolfa
