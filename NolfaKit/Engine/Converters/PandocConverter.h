#pragma once

#include "Engine/Converter.h"
#include "Engine/PandocRunner.h"

#include <optional>

namespace nolfa {

/// Word to Markdown, Markdown to Word, Markdown to PowerPoint: what pandoc does by itself. Pictures of a Word file
/// go to the folder "<stem>-media" beside the Markdown, which links to them.
class PandocConverter : public Converter {
public:
    /// @param referenceDocx, referencePptx  documents whose styles the output takes; may be absent
    PandocConverter(PandocRunner pandoc, std::optional<std::filesystem::path> referenceDocx,
        std::optional<std::filesystem::path> referencePptx);

    [[nodiscard]] std::vector<ConversionPair> pairs() const override;

    /// A run that fails leaves neither a half-written output nor a media folder of its own.
    void convert(const std::filesystem::path &input, const std::filesystem::path &output, ConversionPair pair,
        std::stop_token stop) const override;

private:
    void convertToMarkdown(
        const std::filesystem::path &input, const std::filesystem::path &output, const std::stop_token &stop) const;
    void convertFromMarkdown(const std::filesystem::path &input, const std::filesystem::path &output,
        DocumentFormat target, const std::optional<std::filesystem::path> &reference,
        const std::stop_token &stop) const;

    PandocRunner m_pandoc;
    std::optional<std::filesystem::path> m_referenceDocx;
    std::optional<std::filesystem::path> m_referencePptx;
};

} // namespace nolfa
