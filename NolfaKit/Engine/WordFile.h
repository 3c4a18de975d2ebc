#pragma once

#include <filesystem>

namespace nolfa {

/// A look at a Word file from outside, before a reader is started on it. Thread-safe.
namespace WordFile {

/// Cheap: reads both ends of the file.
/// @throws ConversionError::passwordProtected for an encrypted document, @c unreadableInput for anything that is no
///         whole zip archive: missing, unreadable, empty, cut off, or something else under that name
void requireContainer(const std::filesystem::path &input);

} // namespace WordFile

} // namespace nolfa
