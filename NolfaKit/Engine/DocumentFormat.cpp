#include "Engine/DocumentFormat.h"

#include "Engine/FileName.h"
#include "Localization/NolfaL10n.h"
#include "Platform/Unicode.h"

#include <algorithm>

namespace nolfa {

namespace {

struct Row {
    std::string_view rawValue;
    std::string_view displayName;
    std::string_view badgeName;
    std::string_view fileExtension;
    std::array<std::string_view, 3> matchingExtensions; ///< unused places are empty
    FormatFamily family;
    bool isSourceOnly = false;
};

/// In the order of the cases.
constexpr std::array<Row, DocumentFormats::allCases.size()> rows{{
    {"markdown", "Markdown", "MARKDOWN", "md", {"md", "markdown", "mdown"}, FormatFamily::hub},
    {"docx", "Word", "WORD", "docx", {"docx"}, FormatFamily::office},
    {"pdf", "PDF", "PDF", "pdf", {"pdf"}, FormatFamily::hub},
    {"pptx", "PowerPoint", "POWERPOINT", "pptx", {"pptx"}, FormatFamily::office},
    {"xlsx", "Excel", "EXCEL", "xlsx", {"xlsx"}, FormatFamily::office},
    {"pages", "Pages", "PAGES", "pages", {"pages"}, FormatFamily::apple},
    {"key", "Keynote", "KEYNOTE", "key", {"key"}, FormatFamily::apple},
    {"numbers", "Numbers", "NUMBERS", "numbers", {"numbers"}, FormatFamily::apple},
    {"gdoc", "Google Doc", "GOOGLE DOCS", "gdoc", {"gdoc"}, FormatFamily::google, true},
    {"gsheet", "Google Sheet", "SHEETS", "gsheet", {"gsheet"}, FormatFamily::google, true},
    {"gslides", "Google Slides", "SLIDES", "gslides", {"gslides"}, FormatFamily::google, true},
    {"image", "Image", "IMAGE", "png", {"png", "jpg", "jpeg"}, FormatFamily::picture, true},
}};

const Row &row(DocumentFormat format)
{
    return rows.at(static_cast<std::size_t>(format));
}

} // namespace

namespace DocumentFormats {

std::optional<DocumentFormat> fromRawValue(std::string_view text)
{
    const auto found = std::ranges::find(allCases, text, [](DocumentFormat format) { return rawValue(format); });
    return found == allCases.end() ? std::nullopt : std::optional(*found);
}

std::optional<DocumentFormat> fromURL(const std::filesystem::path &url)
{
    const std::string extension = Unicode::lowercased(FileName::pathExtension(url));
    for (const DocumentFormat format : allCases) {
        const std::span<const std::string_view> matching = matchingExtensions(format);
        if (std::ranges::find(matching, extension) != matching.end())
            return format;
    }
    return std::nullopt;
}

} // namespace DocumentFormats

std::string_view rawValue(DocumentFormat format)
{
    return row(format).rawValue;
}

std::string displayName(DocumentFormat format)
{
    if (format == DocumentFormat::image)
        return T("Image", "Image");
    return std::string(row(format).displayName);
}

std::string_view badgeName(DocumentFormat format)
{
    return row(format).badgeName;
}

std::string_view fileExtension(DocumentFormat format)
{
    return row(format).fileExtension;
}

std::span<const std::string_view> matchingExtensions(DocumentFormat format)
{
    const auto &all = row(format).matchingExtensions;
    const auto used = std::ranges::find(all, std::string_view());
    return {all.begin(), used};
}

FormatFamily family(DocumentFormat format)
{
    return row(format).family;
}

bool isSourceOnly(DocumentFormat format)
{
    return row(format).isSourceOnly;
}

bool isMarkdown(DocumentFormat format)
{
    return format == DocumentFormat::markdown;
}

bool isIWork(DocumentFormat format)
{
    return family(format) == FormatFamily::apple;
}

bool isGoogle(DocumentFormat format)
{
    return family(format) == FormatFamily::google;
}

} // namespace nolfa
