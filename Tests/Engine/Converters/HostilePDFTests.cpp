// PDFs made to do harm: each ends in a sentence or a result, in bounded time and memory.

#include "Engine/Converters/PDFToMarkdownConverter.h"
#include "Platform/Zlib.h"
#include "Support/Bounds.h"
#include "Support/Expect.h"
#include "Support/PDFBuilder.h"
#include "Support/Scopes.h"
#include "Support/StubRecognizer.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <random>

using namespace nolfa;
using namespace nolfa::testing;
using enum DocumentFormat;
namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace {

class HostilePDF : public ::testing::Test {
protected:
    /// The Markdown of a document whose scanned pages all hold the word "seen"; the sentence of its failure otherwise.
    std::string outcome(const std::string &bytes, std::chrono::seconds time = std::chrono::seconds(10))
    {
        const fs::path input = folder.write("in.pdf", bytes);
        const fs::path output = folder / "out.md";
        fs::remove(output);
        const PDFToMarkdownConverter converter(
            {.perPageOCRTimeout = 4}, std::make_shared<StubRecognizer>(std::vector<std::string>{"seen"}));
        const Bounds bounds(time, 1024);
        try {
            converter.convert(input, output, {pdf, markdown}, {});
            return contentOf(output);
        } catch (const ConversionError &error) {
            EXPECT_FALSE(fs::exists(output));
            return error.errorDescription();
        }
    }

    std::string outcome(const PDFBuilder &builder, std::chrono::seconds time = std::chrono::seconds(10))
    {
        return outcome(builder.bytes(), time);
    }

    LanguageScope language{NolfaLanguage::en};
    TemporaryFolder folder;
};

std::string replaced(std::string text, std::string_view what, std::string_view with)
{
    const std::size_t at = text.find(what);
    EXPECT_NE(at, std::string::npos) << what;
    return at == std::string::npos ? text : text.replace(at, what.size(), with);
}

/// The text so many times, in zlib's format.
std::string packed(std::string_view text, int times = 1)
{
    Deflater deflater;
    std::string result;
    for (int i = 0; i < times; ++i)
        deflater.append({reinterpret_cast<const unsigned char *>(text.data()), text.size()}, result);
    deflater.finish(result);
    return result;
}

const std::string text = "Some text that is long enough for a page";

} // namespace

TEST_F(HostilePDF, randomBytesAreNoPDF)
{
    std::mt19937 random(7);
    std::string bytes(100'000, '\0');
    for (char &c : bytes)
        c = static_cast<char>(random());
    EXPECT_THAT(outcome(bytes), HasSubstr("in.pdf"));
    EXPECT_THAT(outcome("%PDF-1.7\n" + bytes), HasSubstr("in.pdf"));
}

TEST_F(HostilePDF, aFileThatWasCutOffAnywhereEndsSomehow)
{
    const std::string whole = PDFBuilder().textPage({text, "and more of it"}).bytes();
    for (std::size_t size = 0; size < whole.size(); size += 37)
        EXPECT_FALSE(outcome(whole.substr(0, size)).empty()) << size;
}

TEST_F(HostilePDF, damagedBytesAnywhereEndSomehow)
{
    const std::string whole = PDFBuilder().textPage({text}).textPage({text}).bytes();
    std::mt19937 random(11);
    for (int round = 0; round < 60; ++round) {
        std::string bytes = whole;
        for (int i = 0; i < 12; ++i)
            bytes[random() % bytes.size()] = static_cast<char>(random());
        EXPECT_FALSE(outcome(bytes).empty());
    }
}

TEST_F(HostilePDF, aDocumentWithoutPagesIsAnEmptyResult)
{
    EXPECT_EQ(outcome(PDFBuilder()), ConversionError::emptyResult(pdf, markdown).errorDescription());
}

TEST_F(HostilePDF, morePagesThanObjectsAreRefused)
{
    const std::string bytes = PDFBuilder().textPage({text}).bytes();
    EXPECT_FALSE(outcome(replaced(bytes, "/Count 1 ", "/Count 1410065407 ")).empty());
}

TEST_F(HostilePDF, aTreeOfPagesThatHoldsItselfEnds)
{
    const std::string bytes = PDFBuilder().textPage({text}).bytes();
    EXPECT_FALSE(outcome(replaced(bytes, "/Kids [ 5 0 R ]", "/Kids [ 2 0 R ]")).empty());
    EXPECT_FALSE(outcome(replaced(bytes, "/Count 1 /Kids [ 5 0 R ]", "/Count 3 /Kids [ 2 0 R 5 0 R 2 0 R ]")).empty());
}

TEST_F(HostilePDF, tenThousandPagesAreRead)
{
    PDFBuilder builder;
    for (int page = 0; page < 10'000; ++page)
        builder.textPage({text});
    EXPECT_THAT(outcome(builder, std::chrono::seconds(20)), StartsWith(text + "\n\n" + text));
}

TEST_F(HostilePDF, formsWithinFormsThatMultiplyEnd)
{
    PDFBuilder builder;
    // Ten times ten times ten … a line of text, twelve levels deep.
    std::string inner = PDFBuilder::show(text, 10, 10);
    int form = builder.addStream(
        inner, "/Type /XObject /Subtype /Form /BBox [0 0 500 500] /Resources << /Font << /F1 3 0 R >> >>");
    for (int level = 0; level < 12; ++level) {
        std::string ten;
        for (int i = 0; i < 10; ++i)
            ten += "/X0 Do ";
        form = builder.addStream(ten,
            "/Type /XObject /Subtype /Form /BBox [0 0 500 500] /Resources << /XObject << /X0 " + std::to_string(form)
                + " 0 R >> >>");
    }
    builder.resources("/XObject << /X0 " + std::to_string(form) + " 0 R >>").page("/X0 Do");
    EXPECT_THAT(outcome(builder, std::chrono::seconds(15)), StartsWith(text));
}

TEST_F(HostilePDF, contentThatUnpacksWithoutEndIsGivenUp)
{
    // A gigabyte of operators in a megabyte, packed twice.
    std::string operators;
    while (operators.size() < (1U << 20U))
        operators += "0 0 m 1 1 l S\n";
    PDFBuilder builder;
    const int content = builder.addStream(packed(packed(operators, 1024)), "/Filter [/FlateDecode /FlateDecode]");
    builder.page("", "/MediaBox [0 0 100 100] /Contents " + std::to_string(content) + " 0 R");
    EXPECT_FALSE(outcome(builder, std::chrono::seconds(40)).empty());
}

TEST_F(HostilePDF, aPageOfEndlessTextIsBounded)
{
    const std::string line = "BT /F1 1 Tf 1 0 0 1 10 10 Tm (" + std::string(60'000, 'x') + ") Tj ET\n";
    PDFBuilder builder;
    const int stream = builder.addStream(packed(line, 1000), "/Filter /FlateDecode");
    builder.page("", "/MediaBox [0 0 600 800] /Contents " + std::to_string(stream) + " 0 R");
    EXPECT_FALSE(outcome(builder, std::chrono::seconds(20)).empty());
}

TEST_F(HostilePDF, aHugePageIsDrawnWithinBounds)
{
    PDFBuilder builder;
    for (int page = 0; page < 6; ++page)
        builder.page("0 g 0 0 1000 1000 re f", "/MediaBox [0 0 1000000 1000000]");
    EXPECT_THAT(outcome(builder, std::chrono::seconds(30)), StartsWith("seen"));
    EXPECT_FALSE(outcome(PDFBuilder().page("", "/MediaBox [-3e38 -3e38 3e38 3e38]")).empty());
    EXPECT_FALSE(outcome(PDFBuilder().page("", "/MediaBox [0 0 99999999999999999999 1]")).empty());
}

TEST_F(HostilePDF, aPictureThatClaimsToBeEnormousIsNotDecoded)
{
    PDFBuilder builder;
    const int picture = builder.addStream("x",
        "/Type /XObject /Subtype /Image /Width 100000 /Height 100000 /ColorSpace /DeviceRGB /BitsPerComponent 8 "
        "/Filter /FlateDecode");
    builder.resources("/XObject << /Im0 " + std::to_string(picture) + " 0 R >>");
    builder.page("q 500 0 0 500 0 0 cm /Im0 Do Q");
    EXPECT_FALSE(outcome(builder, std::chrono::seconds(20)).empty());
}

TEST_F(HostilePDF, deeplyNestedObjectsEnd)
{
    const std::string deep = std::string(200'000, '[') + std::string(200'000, ']');
    EXPECT_FALSE(
        outcome(PDFBuilder().page(PDFBuilder::show(text, 10, 10), "/MediaBox [0 0 300 300] /Deep " + deep)).empty());
    EXPECT_FALSE(outcome(PDFBuilder().page("BT /F1 12 Tf " + deep + " TJ ET")).empty());
    std::string saved;
    for (int i = 0; i < 200'000; ++i)
        saved += "q ";
    EXPECT_THAT(outcome(PDFBuilder().page(saved + PDFBuilder::show(text, 10, 10))), StartsWith(text));
}

TEST_F(HostilePDF, aPatternThatRepeatsWithoutEndIsGivenUp)
{
    PDFBuilder builder;
    const int pattern = builder.addStream("0 0 1 1 re f",
        "/Type /Pattern /PatternType 1 /PaintType 1 /TilingType 1 /BBox [0 0 1 1] /XStep 0.0001 /YStep 0.0001 "
        "/Resources << >>");
    builder.resources("/Pattern << /P0 " + std::to_string(pattern) + " 0 R >>");
    builder.page("/Pattern cs /P0 scn 0 0 595 842 re f");
    EXPECT_FALSE(outcome(builder, std::chrono::seconds(20)).empty());
}

TEST_F(HostilePDF, aDashWithoutEndIsDrawn)
{
    EXPECT_FALSE(
        outcome(PDFBuilder().page("[0.00001 0.00001] 0 d 0 0 m 595 842 l S"), std::chrono::seconds(20)).empty());
}

TEST_F(HostilePDF, objectsThatReferToThemselvesEnd)
{
    const std::string bytes = PDFBuilder().textPage({text}).bytes();
    EXPECT_FALSE(outcome(replaced(bytes, "/Contents 4 0 R", "/Contents 5 0 R")).empty());
    EXPECT_FALSE(outcome(replaced(bytes, "/MediaBox [0 0 595 842]", "/MediaBox 5 0 R /Parent 5 0 R")).empty());
    EXPECT_FALSE(outcome(replaced(bytes, "/F1 3 0 R", "/F1 5 0 R")).empty());
}
