#include "Watermark/WatermarkRenderer.h"

#include "Engine/ConversionError.h"
#include "Engine/ProducedOutput.h"
#include "Localization/NolfaL10n.h"
#include "Platform/FileWriter.h"
#include "Platform/PDFStamper.h"
#include "Platform/PlatformError.h"
#include "Platform/Typesetter.h"
#include "Platform/UUID.h"
#include "Watermark/WatermarkFont.h"
#include "Watermark/WatermarkLayout.h"

#include <algorithm>
#include <unistd.h>

namespace nolfa::WatermarkRenderer {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void failToOpenOutput()
{
    throw ConversionError::engineFailure(
        T("Nolfa couldn't open that location for writing.", "Nolfa n’a pas pu ouvrir cet emplacement en écriture."));
}

[[noreturn]] void failToProduce()
{
    throw ConversionError::engineFailure(T("The PDF couldn't be produced.", "Le PDF n’a pas pu être produit."));
}

PDFStamper opened(const fs::path &input)
{
    std::optional<PDFStamper> stamper = PDFStamper::open(input);
    if (!stamper)
        throw ConversionError::unreadableInput(input);
    if (stamper->isLocked())
        throw ConversionError::passwordProtected(input);
    if (stamper->pageCount() < 1 || !stamper->pageSize(0))
        throw ConversionError::unreadableInput(input);
    return std::move(*stamper);
}

Colour colourOf(const WatermarkSpec &spec)
{
    constexpr std::uint32_t byte = 0xFF;
    constexpr double whole = 255;
    const auto part = [&](unsigned shift) { return static_cast<double>((spec.colorHex >> shift) & byte) / whole; };
    const double alpha = spec.opacity > 0 ? std::min(spec.opacity, 1.0) : 0;
    return {part(16), part(8), part(0), alpha};
}

/// The pages of a document that a run is about, from one index up to another.
struct PageSpan {
    std::size_t begin;
    std::size_t end;
};

bool isSelected(std::size_t index, const WatermarkSpec &spec)
{
    return !spec.text.empty() && spec.pages.contains(static_cast<std::int64_t>(index) + 1);
}

/// The line to stamp; absent when no page wants one.
std::optional<TypesetLine> lineFor(const WatermarkSpec &spec, PageSpan pages)
{
    for (std::size_t index = pages.begin; index < pages.end; ++index) {
        if (isSelected(index, spec)) {
            constexpr double anySize = 100;
            return Typesetter::line(
                spec.text, WatermarkFont::resolve(spec.fontName, anySize).postScriptName, colourOf(spec));
        }
    }
    return std::nullopt;
}

void write(PDFStamper &stamper, PageSpan pages, const WatermarkSpec &spec, ByteSink &sink, const std::stop_token &stop)
{
    try {
        const std::optional<TypesetLine> line = lineFor(spec, pages);
        stamper.begin(sink, line);
        for (std::size_t index = pages.begin; index < pages.end; ++index) {
            const std::optional<Size> size = stamper.pageSize(index);
            const bool isStamped = size && line && isSelected(index, spec);
            stamper.add(
                index, isStamped ? std::optional(WatermarkLayout::places(spec, *line, *size)) : std::nullopt, stop);
        }
        stamper.finish(stop);
    } catch (const PlatformError &) {
        failToProduce();
    }
}

/// Where the file really goes: a link stands for what it points to.
fs::path placeOf(const fs::path &to, const fs::path &input)
{
    std::error_code ignored;
    fs::path place = fs::is_symlink(to, ignored) ? fs::weakly_canonical(to, ignored) : to;
    const fs::file_status status = fs::status(place, ignored);
    const bool isNew = status.type() == fs::file_type::not_found;
    const bool isOurs = status.type() == fs::file_type::regular && ::access(place.c_str(), W_OK) == 0
        && !fs::equivalent(place, input, ignored);
    if (place.empty() || !place.has_filename() || (!isNew && !isOurs))
        failToOpenOutput();
    return place;
}

FileWriter newFile(const fs::path &file)
{
    try {
        return FileWriter(file);
    } catch (const fs::filesystem_error &) {
        failToOpenOutput();
    }
}

/// Puts a complete file in its place, with the permissions of the one before it.
void replace(const fs::path &place, const fs::path &made)
{
    std::error_code failure;
    if (const fs::file_status before = fs::status(place, failure); before.type() == fs::file_type::regular)
        fs::permissions(made, before.permissions(), failure);
    fs::rename(made, place, failure);
    if (failure)
        failToOpenOutput();
}

} // namespace

void render(const fs::path &input, const fs::path &to, const WatermarkSpec &spec, const std::stop_token &stop)
{
    const fs::path place = placeOf(to, input);
    const fs::path making = place.parent_path() / (".nolfa-" + newUUID() + ".pdf");
    UnfinishedOutput unfinished({making});
    try {
        FileWriter file = newFile(making);
        PDFStamper stamper = opened(input);
        FileSink sink(file);
        write(stamper, {0, stamper.pageCount()}, spec, sink, stop);
    } catch (const fs::filesystem_error &error) {
        // The user knows the file by the name that was asked for.
        throw fs::filesystem_error("write", to, error.code());
    }
    replace(place, making);
    unfinished.keep();
}

std::string previewPage(std::size_t index, const fs::path &of, const WatermarkSpec &spec, const std::stop_token &stop)
{
    PDFStamper stamper = opened(of);
    if (index >= stamper.pageCount())
        throw ConversionError::engineFailure(
            T("That page doesn't exist in this document.", "Cette page n’existe pas dans ce document."));
    MemorySink sink;
    try {
        write(stamper, {index, index + 1}, spec, sink, stop);
    } catch (const std::bad_alloc &) {
        throw ConversionError::engineFailure(
            T("The preview couldn't be produced.", "L’aperçu n’a pas pu être produit."));
    }
    return std::move(sink.bytes);
}

} // namespace nolfa::WatermarkRenderer
