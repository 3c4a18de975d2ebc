#include "Engine/NolfaEngine.h"

#include "Engine/Converters/ChainedConverter.h"
#include "Engine/Converters/PPTXToMarkdownConverter.h"
#include "Engine/Converters/PandocConverter.h"
#include "Engine/Converters/XLSXConverter.h"
#include "Engine/PandocRunner.h"

namespace nolfa {

ConversionService NolfaEngine::makeService(const Bundle &bundle)
{
    using enum DocumentFormat;
    const auto workbook = std::make_shared<const XLSXConverter>();
    const auto deck = std::make_shared<const PPTXToMarkdownConverter>();
    ConversionService::Converters converters{workbook, deck};
    const auto addChain = [&converters](DocumentFormat from, DocumentFormat to, std::shared_ptr<const Converter> into,
                              std::shared_ptr<const Converter> outOf) {
        converters.push_back(
            std::make_shared<const ChainedConverter>(from, to, markdown, std::move(into), std::move(outOf)));
    };
    if (const std::optional<PandocRunner> runner = PandocRunner::resolve(bundle)) {
        const auto pandoc = std::make_shared<const PandocConverter>(
            *runner, bundle.resource("reference", "docx"), bundle.resource("reference", "pptx"));
        converters.push_back(pandoc);
        addChain(docx, pptx, pandoc, pandoc);
        addChain(docx, xlsx, pandoc, workbook);
        addChain(xlsx, docx, workbook, pandoc);
        addChain(pptx, docx, deck, pandoc);
    }
    return ConversionService(converters);
}

bool NolfaEngine::isPandocAvailable()
{
    return PandocRunner::resolve(Bundle::main()).has_value();
}

} // namespace nolfa
