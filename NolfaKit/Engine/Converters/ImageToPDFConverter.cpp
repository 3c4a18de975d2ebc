#include "Engine/Converters/ImageToPDFConverter.h"

#include "Engine/ConversionError.h"
#include "Engine/PDFPicture.h"
#include "Engine/PicturePDF.h"
#include "Engine/ProducedOutput.h"
#include "Engine/TimeLimit.h"
#include "Localization/NolfaL10n.h"

#include <algorithm>

namespace nolfa {

namespace fs = std::filesystem;

namespace {

constexpr ConversionPair imageToPDF{DocumentFormat::image, DocumentFormat::pdf};

FileWriter newFile(const fs::path &output)
{
    try {
        return FileWriter(output);
    } catch (const fs::filesystem_error &) {
        throw ConversionError::engineFailure(T("The PDF couldn't be produced.", "Le PDF n’a pas pu être produit."));
    }
}

} // namespace

ImageToPDFConverter::ImageToPDFConverter(Options options)
    : m_options(options)
{
}

std::vector<ConversionPair> ImageToPDFConverter::pairs() const
{
    return {imageToPDF};
}

void ImageToPDFConverter::convert(
    const fs::path &input, const fs::path &output, ConversionPair pair, std::stop_token stop) const
{
    if (pair != imageToPDF)
        throw ConversionError::unsupportedPair(pair.source, pair.target);
    const NolfaFormat::PaperSize paper = NolfaFormat::sizePoints(NolfaFormat::paper());
    UnfinishedOutput unfinished({output});
    withTimeout(m_options.timeout, T("picture rendering", "rendu de l’image"), stop,
        [&](const std::stop_token &workStop) { write(input, output, paper, workStop); });
    unfinished.keep();
}

void ImageToPDFConverter::write(const fs::path &input, const fs::path &output, const NolfaFormat::PaperSize &paper,
    const std::stop_token &stop) const
{
    const PDFPicture picture = PDFPicture::read(input, stop);
    if (stop.stop_requested())
        throw ConversionError::cancelled();
    if (picture.width < 1 || picture.height < 1)
        throw ConversionError::unreadableInput(input);
    Size size{static_cast<double>(picture.width), static_cast<double>(picture.height)};
    if (picture.isTurned())
        std::swap(size.width, size.height);
    const Size page = pageSize(size, paper);
    const Rectangle usable{
        m_options.margin, m_options.margin, page.width - 2 * m_options.margin, page.height - 2 * m_options.margin};
    FileWriter file = newFile(output);
    PicturePDF::write(file, picture, page, fitted(size, usable));
}

Rectangle ImageToPDFConverter::fitted(const Size &imageSize, const Rectangle &rectangle)
{
    if (imageSize.width <= 0 || imageSize.height <= 0 || rectangle.width <= 0 || rectangle.height <= 0)
        return rectangle;
    const double scale = std::min(rectangle.width / imageSize.width, rectangle.height / imageSize.height);
    const Size size{imageSize.width * scale, imageSize.height * scale};
    return {rectangle.x + (rectangle.width - size.width) / 2, rectangle.y + (rectangle.height - size.height) / 2,
        size.width, size.height};
}

Size ImageToPDFConverter::pageSize(const Size &imageSize, const NolfaFormat::PaperSize &paper)
{
    const double shorter = std::min(paper.width, paper.height);
    const double longer = std::max(paper.width, paper.height);
    return imageSize.height < imageSize.width ? Size{longer, shorter} : Size{shorter, longer};
}

} // namespace nolfa
