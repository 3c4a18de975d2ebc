#include "Engine/NolfaEngine.h"

#include "Engine/Converters/ChainedConverter.h"
#include "Engine/Converters/DocxToPDFConverter.h"
#include "Engine/Converters/ImageToMarkdownConverter.h"
#include "Engine/Converters/ImageToPDFConverter.h"
#include "Engine/Converters/MarkdownToPDFConverter.h"
#include "Engine/Converters/PDFToDocxConverter.h"
#include "Engine/Converters/PDFToMarkdownConverter.h"
#include "Engine/Converters/PPTXToMarkdownConverter.h"
#include "Engine/Converters/PandocConverter.h"
#include "Engine/Converters/XLSXConverter.h"
#include "Engine/PandocRunner.h"
#include "Engine/VisionTextRecognizer.h"

namespace nolfa {

ConversionService NolfaEngine::makeService(const Bundle &bundle)
{
    using enum DocumentFormat;
    const auto recognizer = std::make_shared<const VisionTextRecognizer>();
    const auto portable = std::make_shared<const PDFToMarkdownConverter>(PDFToMarkdownConverter::Options{}, recognizer);
    const auto workbook = std::make_shared<const XLSXConverter>();
    const auto deck = std::make_shared<const PPTXToMarkdownConverter>();
    const auto pictureText
        = std::make_shared<const ImageToMarkdownConverter>(ImageToMarkdownConverter::Options{}, recognizer);
    const auto picturePage = std::make_shared<const ImageToPDFConverter>(ImageToPDFConverter::Options{});
    ConversionService::Converters converters{portable, workbook, deck, pictureText, picturePage};
    const auto addChain = [&converters](DocumentFormat from, DocumentFormat to, std::shared_ptr<const Converter> into,
                              std::shared_ptr<const Converter> outOf) {
        converters.push_back(
            std::make_shared<const ChainedConverter>(from, to, markdown, std::move(into), std::move(outOf)));
    };
    addChain(pdf, xlsx, portable, workbook);
    if (const std::optional<PandocRunner> runner = PandocRunner::resolve(bundle)) {
        const auto pandoc = std::make_shared<const PandocConverter>(
            *runner, bundle.resource("reference", "docx"), bundle.resource("reference", "pptx"));
        const auto print = std::make_shared<const MarkdownToPDFConverter>(*runner, std::nullopt, bundle);
        converters.insert(converters.end(),
            {pandoc, print, std::make_shared<const DocxToPDFConverter>(*runner),
                std::make_shared<const PDFToDocxConverter>(portable, pandoc)});
        addChain(xlsx, pdf, workbook, print);
        addChain(pdf, pptx, portable, pandoc);
        addChain(docx, pptx, pandoc, pandoc);
        addChain(docx, xlsx, pandoc, workbook);
        addChain(xlsx, docx, workbook, pandoc);
        addChain(pptx, docx, deck, pandoc);
        addChain(image, docx, pictureText, pandoc);
    }
    return ConversionService(converters);
}

bool NolfaEngine::isPandocAvailable()
{
    return PandocRunner::resolve(Bundle::main()).has_value();
}

} // namespace nolfa
