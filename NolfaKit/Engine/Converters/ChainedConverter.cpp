#include "Engine/Converters/ChainedConverter.h"

#include "Engine/ConversionError.h"
#include "Engine/ProducedOutput.h"
#include "Engine/Scratch.h"

namespace nolfa {

namespace {

void throwIfCancelled(const std::stop_token &stop)
{
    if (stop.stop_requested())
        throw ConversionError::cancelled();
}

} // namespace

ChainedConverter::ChainedConverter(DocumentFormat from, DocumentFormat to, DocumentFormat via,
    std::shared_ptr<const Converter> into, std::shared_ptr<const Converter> outOf)
    : m_source(from)
    , m_target(to)
    , m_hub(via)
    , m_into(std::move(into))
    , m_outOf(std::move(outOf))
{
}

std::vector<ConversionPair> ChainedConverter::pairs() const
{
    return {{m_source, m_target}};
}

void ChainedConverter::convert(const std::filesystem::path &input, const std::filesystem::path &output,
    ConversionPair pair, std::stop_token stop) const
{
    if (pair != ConversionPair{m_source, m_target})
        throw ConversionError::unsupportedPair(pair.source, pair.target);
    Scratch::withScratch([&](const Scratch &scratch) {
        throwIfCancelled(stop);
        const std::filesystem::path interim = scratch.file("interim." + std::string(fileExtension(m_hub)));
        m_into->convert(input, interim, {m_source, m_hub}, stop);
        ProducedOutput::require(interim, m_source, m_hub);

        // The second leg is the expensive one.
        throwIfCancelled(stop);
        m_outOf->convert(interim, output, {m_hub, m_target}, stop);
        ProducedOutput::require(output, m_hub, m_target);
    });
}

} // namespace nolfa
