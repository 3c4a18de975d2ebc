#pragma once

#include "Engine/Converters/PDFToMarkdownConverter.h"
#include "Engine/Converters/PandocConverter.h"

namespace nolfa {

/// PDF to Word, through a Markdown text that is gone afterwards.
class PDFToDocxConverter : public Converter {
public:
    PDFToDocxConverter(std::shared_ptr<const PDFToMarkdownConverter> pdf, std::shared_ptr<const PandocConverter> pandoc)
        : m_pdf(std::move(pdf))
        , m_pandoc(std::move(pandoc))
    {
    }

    [[nodiscard]] std::vector<ConversionPair> pairs() const override;

    void convert(const std::filesystem::path &input, const std::filesystem::path &output, ConversionPair pair,
        std::stop_token stop) const override;

private:
    std::shared_ptr<const PDFToMarkdownConverter> m_pdf;
    std::shared_ptr<const PandocConverter> m_pandoc;
};

} // namespace nolfa
