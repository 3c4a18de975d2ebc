#include "Engine/Converters/MarkdownToPDFConverter.h"

#include "Engine/ConversionError.h"
#include "Engine/LocalPictures.h"
#include "Engine/NativePDF.h"
#include "Engine/PrintPage.h"
#include "Engine/ProducedOutput.h"
#include "Engine/Scratch.h"
#include "Engine/TypesettingFolder.h"
#include "Platform/File.h"
#include "Platform/Unicode.h"

#include <array>

namespace nolfa {

MarkdownToPDFConverter::MarkdownToPDFConverter(
    PandocRunner pandoc, std::optional<std::filesystem::path> typst, Bundle bundle)
    : m_pandoc(std::move(pandoc))
    , m_typstOverride(std::move(typst))
    , m_bundle(std::move(bundle))
{
}

std::vector<ConversionPair> MarkdownToPDFConverter::pairs() const
{
    return {{DocumentFormat::markdown, DocumentFormat::pdf}};
}

std::span<const std::filesystem::path> MarkdownToPDFConverter::systemPlaces()
{
    static const std::array<std::filesystem::path, 2> places{"/opt/homebrew/bin/typst", "/usr/local/bin/typst"};
    return places;
}

std::optional<std::filesystem::path> MarkdownToPDFConverter::resolveTypst(
    const Bundle &bundle, std::span<const std::filesystem::path> places)
{
    std::optional<std::filesystem::path> own = bundle.resource("typst", {}, "bin");
    if (own && File::isExecutable(*own))
        return own;
    for (const std::filesystem::path &place : places) {
        if (File::isExecutable(place))
            return place;
    }
    return std::nullopt;
}

bool MarkdownToPDFConverter::isUsableOutput(const std::filesystem::path &output)
{
    std::error_code failure;
    const std::uintmax_t size = std::filesystem::file_size(output, failure);
    return !failure && size > 0;
}

void MarkdownToPDFConverter::convert(const std::filesystem::path &input, const std::filesystem::path &output,
    ConversionPair /*pair*/, std::stop_token stop) const
{
    if (!File::isReadable(input))
        throw ConversionError::unreadableInput(input);
    UnfinishedOutput unfinished({output});
    const std::optional<std::filesystem::path> engine = m_typstOverride ? m_typstOverride : resolveTypst(m_bundle);
    if (!engine || !typeset(input, output, *engine, stop)) {
        if (stop.stop_requested())
            throw ConversionError::cancelled();
        print(input, output, stop);
    }
    unfinished.keep();
}

/// @return whether the engine left a PDF. When not, nothing is left at the output.
bool MarkdownToPDFConverter::typeset(const std::filesystem::path &input, const std::filesystem::path &output,
    const std::filesystem::path &engine, const std::stop_token &stop) const
{
    const Scratch scratch;
    const std::vector<std::string> environment
        = TypesettingFolder::prepare(scratch.dir(), input.parent_path(), m_bundle);
    try {
        m_pandoc.run({"-f", "gfm", input, "-o", output, "--pdf-engine=" + engine.native()}, std::nullopt, stop,
            scratch.dir(), environment);
        if (isUsableOutput(output))
            return true;
    } catch (const ConversionError &) {
        // Whatever it was, the other way may do. A stop is looked at by the caller.
    }
    std::error_code ignored;
    std::filesystem::remove_all(output, ignored);
    return false;
}

void MarkdownToPDFConverter::print(
    const std::filesystem::path &input, const std::filesystem::path &output, const std::stop_token &stop) const
{
    const std::string html = m_pandoc.run({"-f", "gfm", "-t", "html5", input}, std::nullopt, stop);
    const std::string_view body = Unicode::isValidUTF8(html) ? std::string_view(html) : std::string_view();
    NativePDF::render(printPage(LocalPictures::embedded(body, input.parent_path())), output, stop);
}

} // namespace nolfa
