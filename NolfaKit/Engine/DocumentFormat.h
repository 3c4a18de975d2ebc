#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace nolfa {

/// The formats that documents come in. The order is that of every list the user sees.
enum class DocumentFormat { markdown, docx, pdf, pptx, xlsx, pages, key, numbers, gdoc, gsheet, gslides, image };

/// How screens group formats.
enum class FormatFamily { hub, office, apple, google, picture };

namespace FormatFamilies {

inline constexpr std::array allCases{
    FormatFamily::hub, FormatFamily::office, FormatFamily::apple, FormatFamily::google, FormatFamily::picture};

} // namespace FormatFamilies

namespace DocumentFormats {

inline constexpr std::array allCases{DocumentFormat::markdown, DocumentFormat::docx, DocumentFormat::pdf,
    DocumentFormat::pptx, DocumentFormat::xlsx, DocumentFormat::pages, DocumentFormat::key, DocumentFormat::numbers,
    DocumentFormat::gdoc, DocumentFormat::gsheet, DocumentFormat::gslides, DocumentFormat::image};

[[nodiscard]] std::optional<DocumentFormat> fromRawValue(std::string_view text);

/// By the extension alone, in any case; the file isn't looked at.
[[nodiscard]] std::optional<DocumentFormat> fromURL(const std::filesystem::path &url);

} // namespace DocumentFormats

/// The name that stands for the format in stored values and on the command line; also its identity in lists.
[[nodiscard]] std::string_view rawValue(DocumentFormat format);

/// What messages call the format, in the language in force.
[[nodiscard]] std::string displayName(DocumentFormat format);

/// What the chip of a file row says.
[[nodiscard]] std::string_view badgeName(DocumentFormat format);

/// Of the files that are written, without a dot.
[[nodiscard]] std::string_view fileExtension(DocumentFormat format);

/// Of the files that are recognised, lower case and without dots.
[[nodiscard]] std::span<const std::string_view> matchingExtensions(DocumentFormat format);

[[nodiscard]] FormatFamily family(DocumentFormat format);

/// Can be read but never produced.
[[nodiscard]] bool isSourceOnly(DocumentFormat format);

[[nodiscard]] bool isMarkdown(DocumentFormat format);
[[nodiscard]] bool isIWork(DocumentFormat format);
[[nodiscard]] bool isGoogle(DocumentFormat format);

} // namespace nolfa
