#include "Engine/NolfaEngine.h"

#include "Engine/Converters/ChainedConverter.h"
#include "Engine/Converters/PandocConverter.h"
#include "Engine/PandocRunner.h"

namespace nolfa {

ConversionService NolfaEngine::makeService(const Bundle &bundle)
{
    using enum DocumentFormat;
    ConversionService::Converters converters;
    if (const std::optional<PandocRunner> runner = PandocRunner::resolve(bundle)) {
        const auto pandoc = std::make_shared<const PandocConverter>(
            *runner, bundle.resource("reference", "docx"), bundle.resource("reference", "pptx"));
        converters.push_back(pandoc);
        converters.push_back(std::make_shared<const ChainedConverter>(docx, pptx, markdown, pandoc, pandoc));
    }
    return ConversionService(converters);
}

bool NolfaEngine::isPandocAvailable()
{
    return PandocRunner::resolve(Bundle::main()).has_value();
}

} // namespace nolfa
