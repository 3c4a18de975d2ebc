#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace nolfa {

/// The links of a Markdown text to the pictures beside it. Thread-safe.
namespace MediaLinks {

/// A path as a link destination that every reader of Markdown takes for the same file: what would end the
/// destination or mean something in a URL is percent-encoded, letters of any language stay (CommonMark 0.31, 6.3).
[[nodiscard]] std::string destination(std::string_view path);

/// Puts links that pandoc wrote to the files of @p folder right where their paths hold blanks and the like: pandoc
/// writes them as they are. The file is left alone when there is nothing to put right.
/// @param text    a Markdown file in UTF-8 of our own making
/// @param folder  the media folder as it was given to pandoc; may not exist
/// @throws std::filesystem::filesystem_error when the text can't be written
void repair(const std::filesystem::path &text, const std::filesystem::path &folder);

} // namespace MediaLinks

} // namespace nolfa
