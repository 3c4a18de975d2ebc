#include "Check.h"

#include "Engine/ConversionError.h"
#include "Engine/Scratch.h"
#include "Platform/File.h"
#include "Platform/PDFDocument.h"
#include "Watermark/WatermarkRenderer.h"

#include <cstdint>

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace nolfa;
    static const Scratch scratch;
    const std::filesystem::path file = scratch.file("in.pdf");
    const std::filesystem::path copy = scratch.file("out.pdf");
    File::write(file, textOf(data, size));
    try {
        WatermarkRenderer::render(file, copy, {});
        const std::optional<PDFDocument> made = PDFDocument::open(copy);
        check(made.has_value());
        check(!made->isLocked());
        check(made->pageCount() >= 1);
        File::write(file, WatermarkRenderer::previewPage(0, copy, {}));
        check(PDFDocument::open(file).has_value());
    } catch (const ConversionError &) {
        // No PDF, or locked.
    }
    return 0;
}
