#include "Engine/Converters/PPTXToMarkdownConverter.h"

#include "Engine/ConversionError.h"
#include "Engine/ElementCollector.h"
#include "Engine/FileName.h"
#include "Engine/NumberText.h"
#include "Engine/ProducedOutput.h"
#include "Engine/ReadingLimits.h"
#include "Engine/SlideTextParser.h"
#include "Platform/File.h"
#include "Platform/FileWriter.h"
#include "Platform/Unicode.h"

#include <algorithm>

namespace nolfa {

namespace fs = std::filesystem;
using namespace ElementCollector;

namespace {

/// Where a relationship of a part leads: from the package's root with a slash in front, else from the part's folder.
std::optional<fs::path> resolve(const UnpackedPackage &package, const fs::path &folder, const std::string &target)
{
    if (target.starts_with('/'))
        return package.part(package.root().native() + target);
    return package.part((folder / target).lexically_normal());
}

/// The notes of a slide in one line.
std::string notesText(const fs::path &part, const std::stop_token &stop)
{
    std::string text;
    for (const std::string &paragraph : SlideTextParser::parse(part, stop)) {
        if (!text.empty())
            text += ' ';
        text += paragraph;
    }
    return std::string(Unicode::trimmed(text));
}

/// Writes the sections of the slides, and remembers whether any of them held something.
class Outline {
public:
    Outline(const UnpackedPackage &package, std::stop_token stop)
        : m_package(package)
        , m_stop(std::move(stop))
    {
    }

    void appendSlide(const fs::path &slide)
    {
        m_text.append("## Slide ").append(std::to_string(++m_count)).append("\n\n");
        const std::vector<std::string> paragraphs = SlideTextParser::parse(slide, m_stop);
        for (const std::string &paragraph : paragraphs)
            m_text.append("- ").append(paragraph).append("\n");
        if (paragraphs.empty())
            m_text += "_(no text)_\n";
        m_hasContent = m_hasContent || !paragraphs.empty();
        appendNotes(slide);
        m_text += '\n';
        ReadingLimits::require(m_text.size(), ReadingLimits::keptText);
    }

    /// Nothing at all when no slide had any text: a list of empty slides is of no use to anybody.
    [[nodiscard]] std::string take() { return m_hasContent ? std::move(m_text) : std::string(); }

private:
    void appendNotes(const fs::path &slide)
    {
        const std::optional<fs::path> part = PPTXToMarkdownConverter::notesPart(slide, m_package, m_stop);
        if (!part)
            return;
        m_notesBudget.spend(*part);
        const std::string notes = notesText(*part, m_stop);
        if (notes.empty())
            return;
        m_text.append("\n> ").append(notes).append("\n");
        m_hasContent = true;
    }

    const UnpackedPackage &m_package;
    std::stop_token m_stop;
    ReadingBudget m_notesBudget;
    std::string m_text;
    std::size_t m_count = 0;
    bool m_hasContent = false;
};

} // namespace

std::vector<ConversionPair> PPTXToMarkdownConverter::pairs() const
{
    return {{DocumentFormat::pptx, DocumentFormat::markdown}};
}

void PPTXToMarkdownConverter::convert(
    const fs::path &input, const fs::path &output, ConversionPair /*pair*/, std::stop_token stop) const
{
    if (!File::isReadable(input))
        throw ConversionError::unreadableInput(input);
    UnfinishedOutput unfinished({output});
    const UnpackedPackage package = UnpackedPackage::unpack(input, stop);
    Outline outline(package, stop);
    for (const fs::path &slide : orderedSlides(package, stop))
        outline.appendSlide(slide);
    File::write(output, outline.take());
    unfinished.keep();
}

std::vector<fs::path> PPTXToMarkdownConverter::orderedSlides(
    const UnpackedPackage &package, const std::stop_token &stop)
{
    const fs::path ppt = package.root() / "ppt";
    const auto targets = relationshipTargets(package.part(ppt / "_rels/presentation.xml.rels"), stop);
    std::vector<fs::path> slides;
    ReadingBudget budget;
    for (const Attributes &slide : collect("p:sldId", package.part(ppt / "presentation.xml"), stop)) {
        const std::optional<std::string> id = value(slide, "r:id");
        const auto target = id ? targets.find(*id) : targets.end();
        std::optional<fs::path> part = target == targets.end() ? std::nullopt : resolve(package, ppt, target->second);
        if (!part)
            continue;
        budget.spend(*part);
        slides.push_back(std::move(*part));
    }
    if (!slides.empty())
        return slides;
    slides = package.parts(ppt / "slides", "xml");
    std::erase_if(slides, [](const fs::path &part) { return !part.filename().native().starts_with("slide"); });
    std::ranges::stable_sort(slides, {}, number);
    return slides;
}

std::optional<fs::path> PPTXToMarkdownConverter::notesPart(
    const fs::path &slide, const UnpackedPackage &package, const std::stop_token &stop)
{
    const fs::path folder = slide.parent_path();
    const std::optional<fs::path> relationships
        = package.part(folder / "_rels" / (slide.filename().native() + ".rels"));
    if (!relationships) {
        const std::string name = "notesSlide" + std::to_string(number(slide)) + ".xml";
        return package.part(folder.parent_path() / "notesSlides" / name);
    }
    for (const Attributes &relationship : collect("Relationship", relationships, stop)) {
        const std::optional<std::string> target = value(relationship, "Target");
        if (!target || !value(relationship, "Type").value_or("").ends_with("/notesSlide"))
            continue;
        if (std::optional<fs::path> part = resolve(package, folder, *target))
            return part;
    }
    return std::nullopt;
}

std::int64_t PPTXToMarkdownConverter::number(const fs::path &part)
{
    // Digits of other scripts are numeric too, but no number in base 10 to us: then nothing parses.
    const std::string digits = Unicode::numericCharacters(FileName::stem(part));
    return NumberText::integer(digits).value_or(0);
}

} // namespace nolfa
