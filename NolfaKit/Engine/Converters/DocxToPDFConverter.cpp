#include "Engine/Converters/DocxToPDFConverter.h"

#include "Engine/NativePDF.h"
#include "Engine/PrintPage.h"
#include "Engine/WordFile.h"
#include "Platform/Unicode.h"

namespace nolfa {

std::vector<ConversionPair> DocxToPDFConverter::pairs() const
{
    return {{DocumentFormat::docx, DocumentFormat::pdf}};
}

void DocxToPDFConverter::convert(const std::filesystem::path &input, const std::filesystem::path &output,
    ConversionPair /*pair*/, std::stop_token stop) const
{
    WordFile::requireContainer(input);
    const std::string html
        = m_pandoc.run({"-f", "docx", "-t", "html5", "--embed-resources", input}, std::nullopt, stop);
    NativePDF::render(
        printPage(Unicode::isValidUTF8(html) ? std::string_view(html) : std::string_view()), output, stop);
}

} // namespace nolfa
