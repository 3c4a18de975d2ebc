#include "Engine/Converters/ImageToPDFConverter.h"

#include "Engine/ImageFile.h"
#include "Platform/CancellationError.h"
#include "Platform/PDFDocument.h"
#include "Support/Expect.h"
#include "Support/Pictures.h"
#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"

#include <cmath>
#include <gmock/gmock.h>

using namespace nolfa;
using namespace nolfa::testing;
using enum DocumentFormat;
namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

constexpr ConversionPair imageToPDF{image, pdf};
constexpr NolfaFormat::PaperSize a4{595, 842};

class ImageToPDF : public ::testing::Test {
protected:
    /// Converts a picture with these bytes, and gives back the PDF's.
    std::string convert(const std::string &bytes)
    {
        fs::remove(folder / "a.pdf");
        ImageToPDFConverter({}).convert(folder.write("a.png", bytes), folder / "a.pdf", imageToPDF, {});
        return contentOf(folder / "a.pdf");
    }

    /// The page of the last conversion, a pixel a point, in grey.
    [[nodiscard]] Bitmap page() const
    {
        const std::optional<PDFDocument> document = PDFDocument::open(folder / "a.pdf");
        EXPECT_TRUE(document);
        EXPECT_EQ(document->pageCount(), 1U);
        return document->render(0, 1, {}).value();
    }

    TemporaryFolder folder;
    LocaleScope paperOfFrance{Locale{"fr", "FR"}};
};

int greyAt(const Bitmap &bitmap, double x, double y)
{
    const auto column = static_cast<std::size_t>(x * bitmap.width);
    const auto row = static_cast<std::size_t>(y * bitmap.height);
    return bitmap.pixels.at(row * bitmap.bytesPerRow() + column * bitmap.channels());
}

/// The part of a page that a rectangle covers, a pixel a point.
Bitmap cut(const Bitmap &page, const Rectangle &place)
{
    Bitmap result{static_cast<int>(place.width), static_cast<int>(place.height), Bitmap::Layout::grey, {}};
    const int top = page.height - static_cast<int>(std::lround(place.y + place.height));
    for (int row = 0; row < result.height; ++row) {
        for (int column = 0; column < result.width; ++column) {
            const auto x = static_cast<std::size_t>(std::lround(place.x) + column);
            const auto y = static_cast<std::size_t>(top + row);
            result.pixels.push_back(page.pixels.at(y * page.bytesPerRow() + x * page.channels()));
        }
    }
    return result;
}

/// How far the greys of two pictures of any sizes lie apart at most, looked at in the middles of a grid of fields.
int difference(const Bitmap &one, const Bitmap &other)
{
    constexpr int fields = 4;
    int most = 0;
    for (int row = 0; row < fields; ++row) {
        for (int column = 0; column < fields; ++column) {
            const double x = (column + 0.5) / fields;
            const double y = (row + 0.5) / fields;
            most = std::max(most, std::abs(greyAt(one, x, y) - greyAt(other, x, y)));
        }
    }
    return most;
}

/// A picture of four by four fields, none like another, whose corners tell how it was turned.
Sample fields(int width, int height, unsigned int most)
{
    return [=](int column, int row, int) {
        const auto field = static_cast<unsigned int>(row * 4 / height * 4 + column * 4 / width);
        return field * most / 16U;
    };
}

} // namespace

TEST_F(ImageToPDF, servesOnePairAndRefusesOthers)
{
    const ImageToPDFConverter converter({});
    EXPECT_EQ(converter.pairs(), std::vector<ConversionPair>{imageToPDF});
    expectError(ConversionError::unsupportedPair(image, markdown), [&] {
        converter.convert(folder / "a.png", folder / "a.md", {image, markdown}, {});
    });
}

TEST_F(ImageToPDF, aWidePictureLiesOnAWidePage)
{
    EXPECT_EQ(ImageToPDFConverter::pageSize({1000, 500}, a4), (Size{842, 595}));
    EXPECT_EQ(ImageToPDFConverter::fitted({1000, 500}, {36, 36, 770, 523}), (Rectangle{36, 105, 770, 385}));
}

TEST_F(ImageToPDF, aHighPictureStandsUpright)
{
    EXPECT_EQ(ImageToPDFConverter::pageSize({500, 1000}, a4), (Size{595, 842}));
    EXPECT_EQ(ImageToPDFConverter::fitted({500, 1000}, {36, 36, 523, 770}), (Rectangle{105, 36, 385, 770}));
}

TEST_F(ImageToPDF, aSquarePictureIsUpright)
{
    EXPECT_EQ(ImageToPDFConverter::pageSize({10, 10}, a4), (Size{595, 842}));
    EXPECT_EQ(ImageToPDFConverter::pageSize({10, 10}, {842, 595}), (Size{595, 842}));
}

TEST_F(ImageToPDF, aSmallPictureIsAsLargeAsTheUsableWidthAllows)
{
    EXPECT_EQ(ImageToPDFConverter::fitted({10, 10}, {36, 36, 523, 770}), (Rectangle{36, 159.5, 523, 523}));
}

TEST_F(ImageToPDF, withoutAnAreaTheRectangleComesBackUnchanged)
{
    const Rectangle usable{1, 2, 30, 40};
    for (const Size &size : {Size{0, 5}, {5, 0}, {-1, 5}, {5, -1}})
        EXPECT_EQ(ImageToPDFConverter::fitted(size, usable), usable);
    for (const Rectangle &rectangle : {Rectangle{1, 2, 0, 4}, {1, 2, 4, 0}, {1, 2, -3, 4}, {1, 2, 4, -3}})
        EXPECT_EQ(ImageToPDFConverter::fitted({5, 5}, rectangle), rectangle);
}

TEST_F(ImageToPDF, thePaperFollowsTheRegion)
{
    (void)convert(PNGPicture{}.file());
    EXPECT_EQ(page().width, 595);
    EXPECT_EQ(page().height, 842);
    const LocaleScope america(Locale{"en", "US"});
    (void)convert(PNGPicture{.width = 8}.file());
    EXPECT_EQ(page().width, 792);
    EXPECT_EQ(page().height, 612);
}

TEST_F(ImageToPDF, aJPEGGoesIntoThePDFUnchanged)
{
    for (const int components : {1, 3, 4}) {
        for (const bool isProgressive : {false, true}) {
            const std::string bytes
                = JPEGPicture{.width = 90, .height = 60, .components = components, .isProgressive = isProgressive}
                      .file();
            const std::string document = convert(bytes);
            EXPECT_THAT(document, HasSubstr(bytes));
            EXPECT_THAT(document, HasSubstr("/Width 90 /Height 60"));
            EXPECT_LE(document.size(), bytes.size() + 4096);
        }
    }
}

TEST_F(ImageToPDF, aJPEGIsTurnedByItsPlaceOnThePage)
{
    for (int orientation = 1; orientation <= 8; ++orientation) {
        JPEGPicture picture{.width = 80, .height = 48, .components = 1, .orientation = orientation};
        picture.sample = fields(80, 48, 255);
        const std::string bytes = picture.file();
        EXPECT_THAT(convert(bytes), HasSubstr(bytes));
        const Bitmap expected = ImageFile::load(folder / "a.png", std::nullopt, {});
        const Bitmap paper = page();
        EXPECT_EQ(paper.width > paper.height, orientation <= 4);
        const Size size{static_cast<double>(expected.width), static_cast<double>(expected.height)};
        const Rectangle usable{36, 36, paper.width - 72.0, paper.height - 72.0};
        EXPECT_LT(difference(cut(paper, ImageToPDFConverter::fitted(size, usable)), expected), 6) << orientation;
    }
}

TEST_F(ImageToPDF, inksThatWereStoredInvertedLookAsTheyShould)
{
    // No ink on the left, all black on the right; stored inverted, as the marker tells.
    JPEGPicture picture{.width = 64, .height = 64, .components = 4};
    picture.sample = [](int column, int, int channel) { return column < 32 || channel < 3 ? 255U : 0U; };
    EXPECT_THAT(convert(picture.file()), HasSubstr("/Decode [ 1 0 1 0 1 0 1 0 ]"));
    EXPECT_GT(greyAt(page(), 0.25, 0.5), 240);
    EXPECT_LT(greyAt(page(), 0.75, 0.5), 60);
    picture.hasAdobeMarker = false;
    picture.sample = [](int column, int, int channel) { return column < 32 || channel < 3 ? 0U : 255U; };
    EXPECT_THAT(convert(picture.file()), Not(HasSubstr("/Decode [")));
    EXPECT_GT(greyAt(page(), 0.25, 0.5), 240);
    EXPECT_LT(greyAt(page(), 0.75, 0.5), 60);
}

TEST_F(ImageToPDF, theRowsOfAPNGGoIntoThePDFUnchanged)
{
    for (const auto &[type, bits] : {std::pair{0, 1}, {0, 2}, {0, 4}, {0, 8}, {0, 16}, {2, 8}, {2, 16}}) {
        PNGPicture picture{.width = 64, .height = 96, .bits = bits, .colourType = type};
        picture.sample = fields(64, 96, 1U << static_cast<unsigned int>(bits));
        const std::string document = convert(picture.file());
        EXPECT_THAT(document, HasSubstr("stream\n" + picture.data() + "\nendstream"));
        EXPECT_THAT(document, HasSubstr("/BitsPerComponent " + std::to_string(bits)));
        EXPECT_LE(document.size(), picture.file().size() + 4096);
        const Rectangle place = ImageToPDFConverter::fitted({64, 96}, {36, 36, 523, 770});
        EXPECT_LT(difference(cut(page(), place), ImageFile::load(folder / "a.png", std::nullopt, {})), 4)
            << type << ' ' << bits;
    }
}

TEST_F(ImageToPDF, anInterlacedPNGLosesNothing)
{
    for (const auto &[type, bits] : {std::pair{0, 1}, {0, 16}, {2, 8}, {2, 16}, {3, 4}}) {
        PNGPicture picture{.width = 64, .height = 96, .bits = bits, .colourType = type, .isInterlaced = true};
        picture.palette = type == 3 ? std::string("\0\0\0\x40\x40\x40\x80\x80\x80\xFF\xFF\xFF", 12) : "";
        picture.sample = fields(64, 96, type == 3 ? 4U : 1U << static_cast<unsigned int>(bits));
        EXPECT_THAT(convert(picture.file()), HasSubstr("/BitsPerComponent " + std::to_string(bits)));
        const Rectangle place = ImageToPDFConverter::fitted({64, 96}, {36, 36, 523, 770});
        EXPECT_LT(difference(cut(page(), place), ImageFile::load(folder / "a.png", std::nullopt, {})), 4)
            << type << ' ' << bits;
    }
}

TEST_F(ImageToPDF, aPaletteStaysAPalette)
{
    PNGPicture picture{.width = 64, .height = 96, .bits = 2, .colourType = 3};
    picture.palette = std::string("\0\0\0\x40\x40\x40\x80\x80\x80\xFF\xFF\xFF", 12);
    picture.sample = fields(64, 96, 4);
    const std::string document = convert(picture.file());
    EXPECT_THAT(document, HasSubstr("[ /Indexed /DeviceRGB 3 <000000404040808080FFFFFF> ]"));
    EXPECT_THAT(document, HasSubstr("stream\n" + picture.data() + "\nendstream"));
    const Rectangle place = ImageToPDFConverter::fitted({64, 96}, {36, 36, 523, 770});
    EXPECT_LT(difference(cut(page(), place), ImageFile::load(folder / "a.png", std::nullopt, {})), 4);
}

TEST_F(ImageToPDF, transparencyLetsThePaperThrough)
{
    // Black everywhere; the left half is transparent.
    for (const auto &[type, bits] : {std::pair{4, 8}, {4, 16}, {6, 8}, {6, 16}}) {
        PNGPicture picture{.width = 64, .height = 96, .bits = bits, .colourType = type};
        const int last = type == 4 ? 1 : 3;
        const unsigned int opaque = (1U << static_cast<unsigned int>(bits)) - 1U;
        picture.sample = [=](int column, int, int channel) { return channel == last && column >= 32 ? opaque : 0U; };
        EXPECT_THAT(convert(picture.file()), HasSubstr("/SMask"));
        EXPECT_EQ(greyAt(page(), 0.25, 0.5), 255) << type << ' ' << bits;
        EXPECT_LT(greyAt(page(), 0.75, 0.5), 4) << type << ' ' << bits;
    }
}

TEST_F(ImageToPDF, anAlphaThatIsOpaqueEverywhereIsLeftOut)
{
    PNGPicture picture{.width = 8, .height = 8, .colourType = 6};
    picture.sample = [](int column, int row, int channel) {
        return channel == 3 ? 255U : static_cast<unsigned int>(column * row);
    };
    EXPECT_THAT(convert(picture.file()), Not(HasSubstr("/SMask")));
}

TEST_F(ImageToPDF, transparentColoursAndPlacesOfAPaletteLetThePaperThrough)
{
    PNGPicture colours{
        .width = 64, .height = 96, .colourType = 2, .transparency = std::string("\0\x0A\0\x0A\0\x0A", 6)};
    colours.sample = [](int column, int, int) { return column < 32 ? 10U : 0U; };
    const std::string document = convert(colours.file());
    EXPECT_THAT(document, HasSubstr("/Mask [ 10 10 10 10 10 10 ]"));
    EXPECT_THAT(document, HasSubstr("stream\n" + colours.data() + "\nendstream"));
    EXPECT_GT(greyAt(page(), 0.25, 0.5), 250);
    EXPECT_LT(greyAt(page(), 0.75, 0.5), 4);

    for (const int bits : {1, 2, 4, 8}) {
        PNGPicture palette{.width = 64, .height = 96, .bits = bits, .colourType = 3};
        palette.palette = std::string(6, '\0');
        palette.transparency = std::string(1, '\0');
        palette.sample = [](int column, int, int) { return column < 32 ? 0U : 1U; };
        EXPECT_THAT(convert(palette.file()), HasSubstr("stream\n" + palette.data() + "\nendstream"));
        EXPECT_GT(greyAt(page(), 0.25, 0.5), 250) << bits;
        EXPECT_LT(greyAt(page(), 0.75, 0.5), 4) << bits;
    }
}

TEST_F(ImageToPDF, aProfileComesAlongWhereItFitsThePicture)
{
    EXPECT_THAT(convert(JPEGPicture{.profile = profileHeader("RGB ")}.file()), HasSubstr("/ICCBased"));
    EXPECT_THAT(convert(JPEGPicture{.profile = profileHeader("GRAY")}.file()), Not(HasSubstr("/ICCBased")));
    EXPECT_THAT(convert(JPEGPicture{.profile = "no profile at all"}.file()), Not(HasSubstr("/ICCBased")));
}

TEST_F(ImageToPDF, aDamagedPictureIsUnreadableAndLeavesNothing)
{
    const std::string png = PNGPicture{.width = 100, .height = 100}.file();
    const std::string jpeg = JPEGPicture{.width = 100, .height = 100}.file();
    const std::string noTables = "\xFF\xD8" + jpeg.substr(jpeg.find("\xFF\xC0"));
    for (const std::string &bytes : {std::string("hello"), std::string(), png.substr(0, png.size() / 2),
             png.substr(0, png.size() - 8), jpeg.substr(0, 200), noTables}) {
        expectError(ConversionError::unreadableInput(folder / "a.png"), [&] { (void)convert(bytes); });
        EXPECT_EQ(folder.names(), std::vector<std::string>{"a.png"});
    }
}

TEST_F(ImageToPDF, thePictureKeepsAllItsPixels)
{
    EXPECT_THAT(convert(PNGPicture{.width = 8000, .height = 2000, .bits = 1, .colourType = 0}.file()),
        HasSubstr("/Width 8000 /Height 2000"));
}

TEST_F(ImageToPDF, aFolderThatIsNotThereIsAnEngineFailure)
{
    const fs::path input = folder.write("a.png", PNGPicture{}.file());
    const auto convertInto = [&](NolfaLanguage language) {
        const LanguageScope scope(language);
        return expectCase<ConversionError::EngineFailure>([&] {
            ImageToPDFConverter({}).convert(input, folder / "none/a.pdf", imageToPDF, {});
        }).sentence;
    };
    EXPECT_EQ(convertInto(NolfaLanguage::en), "The PDF couldn't be produced.");
    EXPECT_EQ(convertInto(NolfaLanguage::fr), "Le PDF n’a pas pu être produit.");
}

TEST_F(ImageToPDF, aStopWritesNoFile)
{
    std::stop_source source;
    source.request_stop();
    const fs::path input = folder.write("a.png", PNGPicture{}.file());
    // Whichever notices first, the wait or the work, names the stop its own way.
    EXPECT_ANY_THROW(ImageToPDFConverter({}).convert(input, folder / "a.pdf", imageToPDF, source.get_token()));
    EXPECT_FALSE(fs::exists(folder / "a.pdf"));
}

TEST_F(ImageToPDF, noTimeAtAllIsTimedOutInTheLanguageInForce)
{
    const fs::path input
        = folder.write("a.png", PNGPicture{.width = 3000, .height = 3000, .isInterlaced = true}.file());
    const auto convertIn = [&](NolfaLanguage language) {
        const LanguageScope scope(language);
        return expectCase<ConversionError::TimedOut>([&] {
            ImageToPDFConverter({.timeout = 0.001}).convert(input, folder / "a.pdf", imageToPDF, {});
        }).step;
    };
    EXPECT_EQ(convertIn(NolfaLanguage::en), "picture rendering");
    EXPECT_EQ(convertIn(NolfaLanguage::fr), "rendu de l’image");
    EXPECT_FALSE(fs::exists(folder / "a.pdf"));
}
