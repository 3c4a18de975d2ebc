#include "Engine/Converters/ImageToMarkdownConverter.h"

#include "Engine/ConversionError.h"
#include "Engine/ImageFile.h"
#include "Engine/PDFTextExtraction.h"
#include "Engine/ProducedOutput.h"
#include "Engine/TimeLimit.h"
#include "Localization/NolfaL10n.h"
#include "Platform/CancellationError.h"
#include "Platform/File.h"
#include "Platform/Unicode.h"

namespace nolfa {

namespace fs = std::filesystem;

namespace {

constexpr ConversionPair imageToMarkdown{DocumentFormat::image, DocumentFormat::markdown};

} // namespace

ImageToMarkdownConverter::ImageToMarkdownConverter(Options options, std::shared_ptr<const TextRecognizing> recognizer)
    : m_options(std::move(options))
    , m_recognizer(std::move(recognizer))
{
}

std::vector<ConversionPair> ImageToMarkdownConverter::pairs() const
{
    return {imageToMarkdown};
}

void ImageToMarkdownConverter::convert(
    const fs::path &input, const fs::path &output, ConversionPair pair, std::stop_token stop) const
{
    if (pair != imageToMarkdown)
        throw ConversionError::unsupportedPair(pair.source, pair.target);
    const std::string text = PDFTextExtraction::markdown(recognize(input, stop));
    if (Unicode::trimmed(text).empty())
        throw ConversionError::emptyResult(pair.source, pair.target);
    UnfinishedOutput unfinished({output});
    File::write(output, text + "\n");
    unfinished.keep();
}

std::vector<RecognizedFragment> ImageToMarkdownConverter::recognize(
    const fs::path &input, const std::stop_token &stop) const
{
    const std::vector<std::string> languages = m_options.recognitionLanguages.value_or(NolfaL10n::ocrLanguages());
    try {
        return withTimeout(m_options.timeout, T("text recognition", "reconnaissance de texte"), stop,
            [&](const std::stop_token &workStop) {
                const Bitmap image = ImageFile::load(input, m_options.maxRecognitionPixels, workStop);
                return m_recognizer->recognize(image, languages, workStop);
            });
    } catch (const ConversionError &) {
        throw;
    } catch (const CancellationError &) {
        throw ConversionError::cancelled();
    } catch (const std::exception &failure) {
        if (stop.stop_requested())
            throw ConversionError::cancelled();
        throw ConversionError::toolFailure("Vision",
            T("Text recognition could not read this picture. Try again, and check that the file opens in Preview.",
                "La reconnaissance de texte n’a pas pu lire cette image. Réessayez, et vérifiez que le fichier s’ouvre "
                "dans Aperçu."),
            failure.what());
    }
}

} // namespace nolfa
