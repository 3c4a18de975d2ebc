#include "Engine/ConversionService.h"

#include "Engine/ConversionError.h"
#include "Engine/FileName.h"
#include "Engine/OutputNaming.h"
#include "Engine/ProducedOutput.h"

namespace nolfa {

ConversionService::ConversionService(const Converters &converters)
{
    for (const auto &converter : converters) {
        for (const ConversionPair pair : converter->pairs())
            m_registry[pair] = converter;
    }
}

std::vector<DocumentFormat> ConversionService::supportedTargets(DocumentFormat source) const
{
    std::vector<DocumentFormat> targets;
    for (const DocumentFormat target : DocumentFormats::allCases) {
        if (target != source && !isSourceOnly(target) && m_registry.contains({source, target}))
            targets.push_back(target);
    }
    return targets;
}

std::optional<ConversionCapability> ConversionService::capability(DocumentFormat from, DocumentFormat to) const
{
    return Fidelity::capability(from, to);
}

std::filesystem::path ConversionService::convert(const std::filesystem::path &input, DocumentFormat target,
    const std::optional<std::filesystem::path> &outputDirectory, std::stop_token stop) const
{
    const std::optional<DocumentFormat> source = DocumentFormats::fromURL(input);
    if (!source)
        throw ConversionError::unreadableInput(input);
    const ConversionPair pair{*source, target};
    const auto converter = m_registry.find(pair);
    if (converter == m_registry.end())
        throw ConversionError::unsupportedPair(pair.source, pair.target);

    // Absolute paths: a name can't be taken for an option, and tools may run in other folders.
    const std::filesystem::path from = std::filesystem::absolute(input);
    const std::filesystem::path directory
        = outputDirectory ? std::filesystem::absolute(*outputDirectory) : from.parent_path();
    const OutputClaim claim = OutputNaming::claim(directory, FileName::stem(from), fileExtension(target));
    converter->second->convert(from, claim.url(), pair, std::move(stop));
    ProducedOutput::require(claim.url(), pair.source, pair.target);
    return claim.url();
}

} // namespace nolfa
