#pragma once

#include "Engine/Converter.h"

#include <memory>

namespace nolfa {

/// One pair served by two other converters in a row, through a hub format and an interim file between them.
class ChainedConverter : public Converter {
public:
    ChainedConverter(DocumentFormat from, DocumentFormat to, DocumentFormat via, std::shared_ptr<const Converter> into,
        std::shared_ptr<const Converter> outOf);

    [[nodiscard]] std::vector<ConversionPair> pairs() const override;

    /// @throws ConversionError: @c unsupportedPair for any pair but its own, @c cancelled, and @c emptyResult with
    ///         the formats of the leg that left nothing; a leg's failure passes unchanged
    void convert(const std::filesystem::path &input, const std::filesystem::path &output, ConversionPair pair,
        std::stop_token stop) const override;

private:
    DocumentFormat m_source;
    DocumentFormat m_target;
    DocumentFormat m_hub;
    std::shared_ptr<const Converter> m_into;
    std::shared_ptr<const Converter> m_outOf;
};

} // namespace nolfa
