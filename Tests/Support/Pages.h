#pragma once

#include "Platform/PDFDocument.h"

#include <filesystem>
#include <string>
#include <vector>

namespace nolfa::testing {

/// Opens a PDF; fails the test when it can't.
[[nodiscard]] PDFDocument openPDF(const std::filesystem::path &file);

/// The text of all pages, a line each.
[[nodiscard]] std::string textOfPDF(const std::filesystem::path &file);

/// The PostScript names of the fonts that a PDF embeds, without the tags of subsets, sorted.
[[nodiscard]] std::vector<std::string> fontsOfPDF(const std::filesystem::path &file);

/// How many pixels of a page are dark, at 72 dots an inch.
[[nodiscard]] std::size_t darkPixels(const std::filesystem::path &file, std::size_t page);

} // namespace nolfa::testing
