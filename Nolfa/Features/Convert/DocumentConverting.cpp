#include "Nolfa/Features/Convert/DocumentConverting.h"

#include <utility>

namespace nolfa {

EngineConverting::EngineConverting(ConversionService service)
    : m_service(std::move(service))
{
}

std::vector<DocumentFormat> EngineConverting::supportedTargets(DocumentFormat source) const
{
    return m_service.supportedTargets(source);
}

std::filesystem::path EngineConverting::convert(const std::filesystem::path &input, DocumentFormat target,
    const std::optional<std::filesystem::path> &outputDirectory, std::stop_token stop) const
{
    return m_service.convert(input, target, outputDirectory, std::move(stop));
}

} // namespace nolfa
