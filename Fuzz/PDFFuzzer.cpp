#include "Check.h"

#include "Engine/PDFPageMarkdown.h"
#include "Engine/Scratch.h"
#include "Platform/File.h"
#include "Platform/PDFDocument.h"
#include "Platform/PlatformError.h"
#include "Platform/Unicode.h"

#include <algorithm>
#include <cstdint>
#include <string>

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace nolfa;
    static const Scratch scratch;
    const std::filesystem::path file = scratch.file("in.pdf");
    File::write(file, textOf(data, size));
    const std::optional<PDFDocument> document = PDFDocument::open(file);
    if (!document || document->isLocked())
        return 0;
    constexpr std::size_t mostPages = 3;
    for (std::size_t page = 0; page < std::min(document->pageCount(), mostPages); ++page) {
        try {
            const std::vector<PDFTextLine> lines = document->textLines(page, {});
            for (const PDFTextLine &line : lines) {
                check(!line.text.empty());
                check(Unicode::isValidUTF8(line.text));
                check(line.fontSize >= 0);
            }
            (void)PDFPageMarkdown::markdown(lines, PDFPageMarkdown::bodySize({&lines}));
            (void)document->pageSize(page);
            constexpr double scale = 0.2;
            if (const std::optional<Bitmap> image = document->render(page, scale, {}))
                check(image->pixels.size() == image->bytesPerRow() * static_cast<std::size_t>(image->height));
        } catch (const PlatformError &) {
            // Can't be drawn, or takes too long.
        }
    }
    return 0;
}
