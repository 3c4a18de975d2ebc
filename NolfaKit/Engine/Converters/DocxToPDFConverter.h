#pragma once

#include "Engine/Converter.h"
#include "Engine/PandocRunner.h"

namespace nolfa {

/// Word to PDF through HTML, which keeps the pictures inside.
class DocxToPDFConverter : public Converter {
public:
    explicit DocxToPDFConverter(PandocRunner pandoc)
        : m_pandoc(std::move(pandoc))
    {
    }

    [[nodiscard]] std::vector<ConversionPair> pairs() const override;

    void convert(const std::filesystem::path &input, const std::filesystem::path &output, ConversionPair pair,
        std::stop_token stop) const override;

private:
    PandocRunner m_pandoc;
};

} // namespace nolfa
