#include "Engine/Converters/PDFToDocxConverter.h"

#include "Engine/Scratch.h"

namespace nolfa {

std::vector<ConversionPair> PDFToDocxConverter::pairs() const
{
    return {{DocumentFormat::pdf, DocumentFormat::docx}};
}

void PDFToDocxConverter::convert(const std::filesystem::path &input, const std::filesystem::path &output,
    ConversionPair /*pair*/, std::stop_token stop) const
{
    using enum DocumentFormat;
    Scratch::withScratch([&](const Scratch &scratch) {
        const std::filesystem::path interim = scratch.file("interim.md");
        m_pdf->convert(input, interim, {pdf, markdown}, stop);
        m_pandoc->convert(interim, output, {markdown, docx}, stop);
    });
}

} // namespace nolfa
