#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace nolfa::testing {

/// A small PNG with a pattern of its own for each seed; both sides in pixels.
[[nodiscard]] std::string png(unsigned width, unsigned height, unsigned seed = 0);

/// Has pandoc make a document from its own, richer Markdown (footnotes, raw blocks), with pictures beside @p folder.
/// @return the document, named "name"
std::filesystem::path pandocDocument(const std::filesystem::path &folder, std::string_view name, std::string_view text);

/// A report in French with everything that a report holds: headings, emphasis, nested lists of both kinds, a table,
/// a footnote, a quote, a link, code, and two pictures.
std::filesystem::path reportDocx(const std::filesystem::path &folder, std::string_view name = "report.docx");

/// Has LibreOffice write a document in another format, or read ours; fails the test when it can't.
/// @param format  an extension, with a filter behind a colon if need be
/// @return the new document, in a folder of its own below @p folder
std::filesystem::path officeDocument(
    const std::filesystem::path &folder, const std::filesystem::path &source, const std::string &format);

/// The text of one part of a zip package, by unzip. Empty when there is none.
[[nodiscard]] std::string partOf(const std::filesystem::path &package, std::string_view part);

/// The names of a zip package's parts.
[[nodiscard]] std::vector<std::string> partsOf(const std::filesystem::path &package);

} // namespace nolfa::testing
