#pragma once

#include "Engine/Converter.h"
#include "Engine/UnpackedPackage.h"

namespace nolfa {

/// PowerPoint to a Markdown outline: a section for each slide, a bullet for each paragraph, the notes as a quotation.
class PPTXToMarkdownConverter : public Converter {
public:
    [[nodiscard]] std::vector<ConversionPair> pairs() const override;

    /// A deck without any text gives an empty file.
    void convert(const std::filesystem::path &input, const std::filesystem::path &output, ConversionPair pair,
        std::stop_token stop) const override;

    /// The slides in the order of the presentation; without a usable list all that lie in the package, by the number
    /// in their names.
    /// @throws ConversionError when the list names parts again without end
    [[nodiscard]] static std::vector<std::filesystem::path> orderedSlides(
        const UnpackedPackage &package, const std::stop_token &stop);

    [[nodiscard]] static std::optional<std::filesystem::path> notesPart(
        const std::filesystem::path &slide, const UnpackedPackage &package, const std::stop_token &stop);

    /// The digits of a file's name, without its extension, as a number; 0 without any.
    [[nodiscard]] static std::int64_t number(const std::filesystem::path &part);
};

} // namespace nolfa
