#pragma once

#include "Engine/Converter.h"
#include "Engine/TextRecognizing.h"

#include <memory>
#include <optional>
#include <string>

namespace nolfa {

/// The text in a picture as Markdown.
class ImageToMarkdownConverter : public Converter {
public:
    struct Options {
        int maxRecognitionPixels = 4000; ///< of the longer side of the picture that is given to recognition
        double timeout = 30; ///< seconds, for loading and recognition together
        std::optional<std::vector<std::string>> recognitionLanguages; ///< absent: NolfaL10n::ocrLanguages()
    };

    ImageToMarkdownConverter(Options options, std::shared_ptr<const TextRecognizing> recognizer);

    [[nodiscard]] std::vector<ConversionPair> pairs() const override;

    /// A picture in which nothing is read is a ConversionError::emptyResult.
    void convert(const std::filesystem::path &input, const std::filesystem::path &output, ConversionPair pair,
        std::stop_token stop) const override;

private:
    [[nodiscard]] std::vector<RecognizedFragment> recognize(
        const std::filesystem::path &input, const std::stop_token &stop) const;

    Options m_options;
    std::shared_ptr<const TextRecognizing> m_recognizer;
};

} // namespace nolfa
