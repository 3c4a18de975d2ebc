#include "Engine/PDFPageMarkdown.h"

#include "Engine/ItemNumber.h"
#include "Engine/PDFTextExtraction.h"
#include "Platform/Unicode.h"

#include <algorithm>
#include <array>

namespace nolfa::PDFPageMarkdown {

namespace {

// How much larger than body text a line is that counts as a heading.
constexpr double firstHeading = 1.6;
constexpr double secondHeading = 1.3;

constexpr double usualBodySize = 12;

constexpr char32_t unknown = 0xFFFD;
constexpr std::string_view unknownBytes = "\xEF\xBF\xBD";

constexpr std::array<std::string_view, 7> bullets{"•", "◦", "▪", "·", "-", "*", "–"};

std::size_t charactersOfLine(std::string_view text)
{
    if (text.find(unknownBytes) == std::string_view::npos)
        return Unicode::countCharacters(Unicode::trimmed(text));
    std::string known(text);
    for (std::size_t at = known.find(unknownBytes); at != std::string::npos; at = known.find(unknownBytes, at))
        known.erase(at, unknownBytes.size());
    return Unicode::countCharacters(Unicode::trimmed(known), unknown);
}

void appendHeading(std::string &text, std::string_view mark, std::string_view line)
{
    text += '\n';
    text += mark;
    text += line;
    text += "\n\n";
}

} // namespace

std::size_t characters(const std::vector<PDFTextLine> &lines)
{
    std::size_t count = 0;
    for (const PDFTextLine &line : lines) {
        const std::size_t ofLine = charactersOfLine(line.text);
        // The line feed between two lines is a character as well.
        if (ofLine > 0)
            count += ofLine + (count > 0 ? 1 : 0);
    }
    return count;
}

std::size_t medianCharacters(std::vector<std::size_t> counts)
{
    std::erase(counts, 0U);
    if (counts.empty())
        return 0;
    const auto middle = counts.begin() + static_cast<std::ptrdiff_t>(counts.size() / 2);
    std::ranges::nth_element(counts, middle);
    return *middle;
}

bool needsRecognition(std::size_t characters, std::size_t median, const Thresholds &thresholds)
{
    return characters < thresholds.minCharactersPerPage
        || thresholds.thinPageRatio * static_cast<double>(median) > static_cast<double>(characters);
}

double bodySize(const std::vector<const std::vector<PDFTextLine> *> &pages)
{
    std::vector<double> sizes;
    for (const std::vector<PDFTextLine> *lines : pages) {
        for (const PDFTextLine &line : *lines) {
            if (line.fontSize > 0)
                sizes.push_back(line.fontSize);
        }
    }
    return PDFTextExtraction::median(std::move(sizes)).value_or(usualBodySize);
}

std::string markdown(const std::vector<PDFTextLine> &lines, double bodySize)
{
    std::string text;
    for (const PDFTextLine &line : lines) {
        if (bodySize * firstHeading <= line.fontSize) {
            appendHeading(text, "# ", line.text);
        } else if (bodySize * secondHeading <= line.fontSize) {
            appendHeading(text, "## ", line.text);
        } else if (const std::optional<std::string_view> item = strippedBullet(line.text)) {
            text += "- ";
            text += *item;
            text += '\n';
        } else {
            text += line.text;
            text += '\n';
        }
    }
    return std::string(Unicode::trimmed(text));
}

std::optional<std::string_view> strippedBullet(std::string_view line)
{
    for (const std::string_view bullet : bullets) {
        if (line.starts_with(bullet) && line.substr(bullet.size()).starts_with(' '))
            return Unicode::trimmedOfBlanks(line.substr(bullet.size() + 1));
    }
    std::string_view rest = line;
    if (!takeItemNumber(rest))
        return std::nullopt;
    return rest;
}

std::string pageMarker(std::size_t number)
{
    return "<!-- nolfa:page " + std::to_string(number) + " -->";
}

std::string assemble(const std::vector<std::string> &pages, PageMarkers markers)
{
    std::string text;
    for (std::size_t index = 0; index < pages.size(); ++index) {
        std::string block = markers == PageMarkers::yes ? pageMarker(index + 1) + "\n\n" : std::string();
        block += Unicode::trimmed(pages[index]);
        const std::string_view trimmed = Unicode::trimmed(block);
        if (trimmed.empty())
            continue;
        if (!text.empty())
            text += "\n\n";
        text += trimmed;
    }
    text += '\n';
    return text;
}

} // namespace nolfa::PDFPageMarkdown
