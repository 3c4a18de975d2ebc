#include "Engine/Converters/PandocConverter.h"

#include "Engine/ConversionError.h"
#include "Engine/FileName.h"
#include "Engine/MediaLinks.h"
#include "Engine/ProducedOutput.h"
#include "Engine/WordFile.h"
#include "Platform/File.h"

namespace nolfa {

namespace {

constexpr ConversionPair docxToMarkdown{DocumentFormat::docx, DocumentFormat::markdown};
constexpr ConversionPair markdownToDocx{DocumentFormat::markdown, DocumentFormat::docx};
constexpr ConversionPair markdownToPptx{DocumentFormat::markdown, DocumentFormat::pptx};

} // namespace

PandocConverter::PandocConverter(PandocRunner pandoc, std::optional<std::filesystem::path> referenceDocx,
    std::optional<std::filesystem::path> referencePptx)
    : m_pandoc(std::move(pandoc))
    , m_referenceDocx(std::move(referenceDocx))
    , m_referencePptx(std::move(referencePptx))
{
}

std::vector<ConversionPair> PandocConverter::pairs() const
{
    return {docxToMarkdown, markdownToDocx, markdownToPptx};
}

void PandocConverter::convert(const std::filesystem::path &input, const std::filesystem::path &output,
    ConversionPair pair, std::stop_token stop) const
{
    if (pair == docxToMarkdown)
        convertToMarkdown(input, output, stop);
    else if (pair == markdownToDocx)
        convertFromMarkdown(input, output, pair.target, m_referenceDocx, stop);
    else if (pair == markdownToPptx)
        convertFromMarkdown(input, output, pair.target, m_referencePptx, stop);
    else
        throw ConversionError::unsupportedPair(pair.source, pair.target);
}

void PandocConverter::convertToMarkdown(
    const std::filesystem::path &input, const std::filesystem::path &output, const std::stop_token &stop) const
{
    WordFile::requireContainer(input);
    const std::filesystem::path media = output.parent_path() / (FileName::stem(output) + "-media");
    UnfinishedOutput unfinished({output, media});
    m_pandoc.run({"-f", "docx", "-t", "gfm-raw_html", "--wrap=none", "--extract-media", media, "-o", output, input},
        std::nullopt, stop);
    MediaLinks::repair(output, media);
    unfinished.keep();
}

void PandocConverter::convertFromMarkdown(const std::filesystem::path &input, const std::filesystem::path &output,
    DocumentFormat target, const std::optional<std::filesystem::path> &reference, const std::stop_token &stop) const
{
    if (!File::isReadable(input))
        throw ConversionError::unreadableInput(input);
    std::vector<std::string> arguments{"-f", "gfm", "-t", std::string(fileExtension(target))};
    if (reference)
        arguments.insert(arguments.end(), {"--reference-doc", *reference});
    arguments.insert(arguments.end(), {"-o", output, input});
    UnfinishedOutput unfinished({output});
    // In the text's own folder, because that is where the links to its pictures lead from.
    m_pandoc.run(arguments, std::nullopt, stop, input.parent_path());
    unfinished.keep();
}

} // namespace nolfa
