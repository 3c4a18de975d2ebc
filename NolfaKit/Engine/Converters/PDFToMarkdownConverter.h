#pragma once

#include "Engine/Converter.h"
#include "Engine/TextRecognizing.h"
#include "Platform/PDFDocument.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace nolfa {

/// PDF to Markdown, page by page: from the text layer where a page has one of reasonable size, by text recognition
/// where it hasn't. A page that can't be read leaves a marker and never ends the conversion.
class PDFToMarkdownConverter : public Converter {
public:
    struct Options {
        std::size_t minCharactersPerPage = 24; ///< below it a page counts as scanned
        double thinPageRatio = 0.15; ///< below this part of the median page a page counts as scanned
        int maxConcurrentOCRPages = 4; ///< a value below 1 counts as 1
        double perPageOCRTimeout = 20; ///< seconds for drawing and recognising one page
        bool emitPageMarkers = false; ///< whether each page's text is preceded by pageMarker()
        /// Absent: NolfaL10n::ocrLanguages() of the moment of the conversion.
        std::optional<std::vector<std::string>> recognitionLanguages;
    };

    PDFToMarkdownConverter(Options options, std::shared_ptr<const TextRecognizing> recognizer);

    [[nodiscard]] std::vector<ConversionPair> pairs() const override;

    /// @throws ConversionError::unreadableInput, passwordProtected, emptyResult; engineFailure for text beyond all
    /// reason; CancellationError
    void convert(const std::filesystem::path &input, const std::filesystem::path &output, ConversionPair pair,
        std::stop_token stop) const override;

    /// The line that stands before the text of page @p number, counted from one, when markers are asked for.
    [[nodiscard]] static std::string pageMarker(std::size_t number);

private:
    [[nodiscard]] std::vector<std::string> pageContents(PDFDocument document, const std::stop_token &stop) const;
    void recognize(PDFDocument document, const std::vector<std::size_t> &scanned, std::vector<std::string> &contents,
        const std::stop_token &stop) const;

    Options m_options;
    std::shared_ptr<const TextRecognizing> m_recognizer;
};

} // namespace nolfa
