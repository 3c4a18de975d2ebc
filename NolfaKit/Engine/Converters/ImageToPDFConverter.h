#pragma once

#include "Engine/Converter.h"
#include "Localization/NolfaFormat.h"
#include "Platform/Geometry.h"

namespace nolfa {

/// A picture on one page of the user's paper, with all its pixels.
class ImageToPDFConverter : public Converter {
public:
    struct Options {
        double margin = 36; ///< points, on all four sides
        double timeout = 30; ///< seconds, for loading and writing the page
    };

    explicit ImageToPDFConverter(Options options);

    [[nodiscard]] std::vector<ConversionPair> pairs() const override;

    void convert(const std::filesystem::path &input, const std::filesystem::path &output, ConversionPair pair,
        std::stop_token stop) const override;

    /// The largest rectangle of the picture's proportions in the middle of another one, which comes back unchanged when
    /// either has no area. Small pictures are enlarged.
    [[nodiscard]] static Rectangle fitted(const Size &imageSize, const Rectangle &rectangle);

    /// The paper lying for a picture that is wider than high, else upright; in points.
    [[nodiscard]] static Size pageSize(const Size &imageSize, const NolfaFormat::PaperSize &paper);

private:
    void write(const std::filesystem::path &input, const std::filesystem::path &output,
        const NolfaFormat::PaperSize &paper, const std::stop_token &stop) const;

    Options m_options;
};

} // namespace nolfa
