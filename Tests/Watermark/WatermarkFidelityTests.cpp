// What a copy looks like, beside its original, as another program draws both. NOLFA_PDF_FOLDER may name a folder of
// further documents.

#include "Support/DrawnPage.h"
#include "Support/PDFBuilder.h"
#include "Support/Pages.h"
#include "Support/Processes.h"
#include "Support/TemporaryFolder.h"
#include "Watermark/WatermarkRenderer.h"

#include <algorithm>
#include <cstdlib>
#include <gmock/gmock.h>
#include <map>

using namespace nolfa;
using namespace nolfa::testing;
namespace fs = std::filesystem;

namespace {

/// A hair that smoothing swallows on one of the two.
constexpr double mostDifferent = 0.0005;

using Make = PDFBuilder (*)(const std::string &entries);

std::string x(int object)
{
    return std::to_string(object) + " 0 R";
}

/// Draws one form or picture named /X.
PDFBuilder showing(PDFBuilder builder, int object, const std::string &content, const std::string &entries)
{
    builder.resources("/XObject << /X " + x(object) + " >>").page(content, entries);
    return builder;
}

PDFBuilder words(const std::string &entries)
{
    return PDFBuilder().page(
        PDFBuilder::show("Words in a row", 20, 150, 20) + PDFBuilder::show("and below", 20, 30, 9), entries);
}

PDFBuilder paths(const std::string &entries)
{
    return PDFBuilder().page("2 J 1 j [9 4] 2 d 5 w 20 20 m 180 60 l 90 250 l s 1 0 0 RG 0 1 0 rg [] 0 d 1 w "
                             "30 30 60 60 re B* 0.2 0.4 0.6 0.1 k 100 100 m 150 250 190 50 120 100 c f*",
        entries);
}

PDFBuilder picture(const std::string &entries)
{
    PDFBuilder builder;
    std::string samples;
    for (int index = 0; index < 16 * 16 * 3; ++index)
        samples += static_cast<char>(index * 7);
    const int image = builder.addStream(
        samples, "/Type /XObject /Subtype /Image /Width 16 /Height 16 /BitsPerComponent 8 /ColorSpace /DeviceRGB");
    return showing(builder, image, "q 150 20 -30 200 40 30 cm /X Do Q", entries);
}

PDFBuilder pictureInInks(const std::string &entries)
{
    PDFBuilder builder;
    std::string samples;
    for (int index = 0; index < 8 * 8 * 4; ++index)
        samples += static_cast<char>(index);
    const int image = builder.addStream(samples,
        "/Type /XObject /Subtype /Image /Width 8 /Height 8 /BitsPerComponent 8 /ColorSpace /DeviceCMYK /Decode [1 0 1 "
        "0 1 0 1 0]");
    return showing(builder, image, "q 100 0 0 100 40 30 cm /X Do Q", entries);
}

PDFBuilder pictureWithAlpha(const std::string &entries)
{
    PDFBuilder builder;
    const int alpha = builder.addStream(std::string("\x00\x40\x80\xFF", 4),
        "/Type /XObject /Subtype /Image /Width 2 /Height 2 /BitsPerComponent 8 /ColorSpace /DeviceGray");
    const int image = builder.addStream(std::string("\x00\x01\x02\x01", 4),
        "/Type /XObject /Subtype /Image /Width 2 /Height 2 /BitsPerComponent 8 /ColorSpace [/Indexed /DeviceRGB 2 "
        "<FF000000FF000000FF>] /SMask "
            + x(alpha));
    return showing(builder, image, "0 1 1 rg 0 0 300 80 re f q 150 0 0 150 20 30 cm /X Do Q", entries);
}

PDFBuilder stencil(const std::string &entries)
{
    PDFBuilder builder;
    const int image = builder.addStream(
        "\xAA\x55\xAA\x55\xF0\x0F\xF0\x0F", "/Type /XObject /Subtype /Image /Width 8 /Height 8 /ImageMask true");
    return showing(builder, image,
        "1 0 1 rg q 160 0 0 160 20 30 cm /X Do Q q 30 0 0 30 5 5 cm BI /W 2 /H 2 /BPC 8 /CS /G ID \x10\x90\xC0\x40 EI "
        "Q",
        entries);
}

PDFBuilder shadings(const std::string &entries)
{
    PDFBuilder builder;
    const int function = builder.add("<< /FunctionType 2 /Domain [0 1] /C0 [1 0 0] /C1 [0 0 1] /N 1.5 >>");
    const int axial = builder.add("<< /ShadingType 2 /ColorSpace /DeviceRGB /Coords [0 0 150 150] /Function "
        + x(function) + " /Extend [true false] >>");
    const int radial = builder.add(
        "<< /ShadingType 3 /ColorSpace /DeviceRGB /Coords [100 150 10 120 160 60] /Function " + x(function) + " >>");
    builder.resources("/Shading << /A " + x(axial) + " /R " + x(radial) + " >>")
        .page("q 10 10 120 200 re W n /A sh Q /R sh", entries);
    return builder;
}

PDFBuilder patterns(const std::string &entries)
{
    PDFBuilder builder;
    const int coloured = builder.addStream("1 0 0 rg 0 0 5 5 re f 0 0 1 rg 5 5 5 5 re f",
        "/PatternType 1 /PaintType 1 /TilingType 1 /BBox [0 0 10 10] /XStep 12 /YStep 11 /Matrix [1 0.2 0 1 3 4] "
        "/Resources << >>");
    const int plain = builder.addStream(
        "0 0 4 4 re f", "/PatternType 1 /PaintType 2 /TilingType 1 /BBox [0 0 8 8] /XStep 8 /YStep 8 /Resources << >>");
    builder
        .resources(
            "/Pattern << /P " + x(coloured) + " /U " + x(plain) + " >> /ColorSpace << /CP [/Pattern /DeviceRGB] >>")
        .page("/Pattern cs /P scn 10 10 150 100 re f /CP cs 0 0.6 0 /U scn 30 130 120 90 re f", entries);
    return builder;
}

PDFBuilder blends(const std::string &entries)
{
    PDFBuilder builder;
    const int multiply = builder.add("<< /BM /Multiply /ca 0.7 /CA 0.5 >>");
    const int screen = builder.add("<< /BM /Screen >>");
    const int mask = builder.addStream("0.5 g 0 0 200 300 re f 1 g 40 40 90 90 re f",
        "/Type /XObject /Subtype /Form /BBox [0 0 200 300] /Group << /S /Transparency /CS /DeviceGray >> /Resources << "
        ">>");
    const int masked = builder.add("<< /SMask << /S /Luminosity /G " + x(mask) + " >> >>");
    const int group = builder.addStream("1 0 0 rg 50 50 80 80 re f 0 1 0 rg 90 90 80 80 re f",
        "/Type /XObject /Subtype /Form /BBox [0 0 200 300] /Group << /S /Transparency /I true /K true >> /Resources << "
        ">>");
    builder
        .resources("/ExtGState << /M " + x(multiply) + " /S " + x(screen) + " /K " + x(masked) + " >> /XObject << /X "
            + x(group) + " >>")
        .page("0.9 0.8 0.2 rg 0 0 120 300 re f q /M gs /X Do Q q /S gs 0.3 0.1 0.7 rg 20 200 150 40 re f Q /K gs 0 0 1 "
              "rg 0 0 200 150 re f",
            entries + " /Group << /S /Transparency /CS /DeviceRGB /I true >>");
    return builder;
}

PDFBuilder drawnFont(const std::string &entries)
{
    PDFBuilder builder;
    const int glyph = builder.addStream("700 0 0 0 700 700 d1 0 0 350 700 re f 400 100 250 250 re f");
    const int font = builder.add(
        "<< /Type /Font /Subtype /Type3 /FontBBox [0 0 700 700] /FontMatrix [0.001 0 0 0.001 0 0] /CharProcs << /a "
        + x(glyph)
        + " >> /Encoding << /Type /Encoding /Differences [97 /a] >> /FirstChar 97 /LastChar 97 /Widths [800] >>");
    builder.font("T3", font).page("0.6 0 0 rg BT /T3 40 Tf 20 100 Td (aaa) Tj ET", entries);
    return builder;
}

PDFBuilder nestedForms(const std::string &entries)
{
    PDFBuilder builder;
    const int inner = builder.addStream("0 0 1 rg 0 0 30 30 re f 1 w 0 0 m 60 60 l S",
        "/Type /XObject /Subtype /Form /BBox [0 0 50 50] /Matrix [0.8 0.6 -0.6 0.8 10 0] /Resources << >>");
    const int outer = builder.addStream("/I Do 1 0 0 1 60 20 cm /I Do",
        "/Type /XObject /Subtype /Form /BBox [0 0 150 150] /Matrix [1 0 0 2 5 5] /Resources << /XObject << /I "
            + x(inner) + " >> >>");
    return showing(builder, outer, "/X Do 1 0 0 1 20 100 cm /X Do", entries);
}

PDFBuilder namedInks(const std::string &entries)
{
    PDFBuilder builder;
    const int function = builder.add("<< /FunctionType 2 /Domain [0 1] /C0 [0 0 0 0] /C1 [0 0.8 1 0.1] /N 1 >>");
    builder
        .resources("/ColorSpace << /S [/Separation /Orange /DeviceCMYK " + x(function)
            + "] /C [/CalRGB << /WhitePoint [0.95 1 1.09] /Gamma [2.2 2.2 2.2] >>] /L [/Lab << /WhitePoint [0.96 1 "
              "0.82] /Range [-100 100 -100 100] >>] >>")
        .page("/S cs 0.7 scn 10 10 80 200 re f /C cs 0.2 0.5 0.9 scn 100 10 40 200 re f /L cs 60 40 -30 scn 150 10 40 "
              "200 re f",
            entries);
    return builder;
}

PDFBuilder clippedByText(const std::string &entries)
{
    return PDFBuilder().page("q BT /F1 80 Tf 7 Tr 10 100 Td (Clip) Tj ET 0 0.5 0.5 rg 0 0 200 130 re f Q BT /F1 30 Tf "
                             "1 Tr 10 30 Td 5 Tc 80 Tz (Line) Tj ET",
        entries);
}

const std::map<std::string, Make> contents{{"words", words}, {"paths", paths}, {"picture", picture},
    {"picture in inks", pictureInInks}, {"picture with alpha", pictureWithAlpha}, {"stencil", stencil},
    {"shadings", shadings}, {"patterns", patterns}, {"blends", blends}, {"drawn font", drawnFont},
    {"nested forms", nestedForms}, {"named inks", namedInks}, {"clipped by text", clippedByText}};

const std::vector<std::string> frames{"/MediaBox [0 0 200 300]", "/MediaBox [0 0 200 300] /Rotate 90",
    "/MediaBox [0 0 200 300] /Rotate 180", "/MediaBox [0 0 200 300] /Rotate 270",
    "/MediaBox [0 0 200 300] /CropBox [30 40 150 200]", "/MediaBox [-40 20 160 320]",
    "/MediaBox [10 10 190 290] /Rotate 90 /CropBox [0 0 400 400]", "/MediaBox [0 0 200.25 300.5] /Rotate 270",
    "/MediaBox [0 0 200 300] /UserUnit 2"};

class Fidelity : public ::testing::Test {
protected:
    /// Compares pages of a document with those of its unstamped copy.
    void expectFaithful(const fs::path &input, int first, int last, double dotsPerInch = 72)
    {
        SCOPED_TRACE(input);
        const fs::path copy = folder / "copy.pdf";
        ASSERT_NO_THROW(WatermarkRenderer::render(input, copy, {}));
        expectSound(copy);
        const std::vector<DrawnPage> original = drawnPages(input, first, last, dotsPerInch);
        const std::vector<DrawnPage> copied = drawnPages(copy, first, last, dotsPerInch);
        ASSERT_EQ(copied.size(), original.size());
        for (std::size_t page = 0; page < original.size(); ++page)
            EXPECT_LE(difference(original[page], copied[page]), mostDifferent)
                << "page " << first + static_cast<int>(page);
    }

    /// Compares a stamped copy with the original outside of what the stamp covers.
    void expectStampOnly(const fs::path &input, const fs::path &blank)
    {
        SCOPED_TRACE(input);
        const WatermarkSpec spec{.text = "STAMP", .opacity = 0.5};
        WatermarkRenderer::render(input, folder / "stamped.pdf", spec);
        WatermarkRenderer::render(blank, folder / "stamp.pdf", spec);
        const DrawnPage original = drawnPage(input);
        const DrawnPage copy = drawnPage(folder / "stamped.pdf");
        const DrawnPage stamp = drawnPage(folder / "stamp.pdf");
        ASSERT_EQ(stamp.pixels.size(), original.pixels.size());
        ASSERT_EQ(copy.pixels.size(), original.pixels.size());
        std::size_t outside = 0;
        std::size_t inside = 0;
        for (std::size_t index = 0; index < original.pixels.size(); ++index) {
            const bool isStamped = stamp.pixels[index] != DrawnPage::Pixel{255, 255, 255};
            const DrawnPage one{1, 1, {original.pixels[index]}};
            const bool differs = difference(one, {1, 1, {copy.pixels[index]}}) > 0;
            (isStamped ? inside : outside) += differs ? 1U : 0U;
        }
        EXPECT_LE(static_cast<double>(outside) / static_cast<double>(original.pixels.size()), mostDifferent);
        EXPECT_GT(inside, 100U);
    }

    static void expectSound(const fs::path &copy)
    {
        const ProcessResult check = runProgram("/usr/bin/qpdf", {"--check", copy});
        EXPECT_EQ(check.status, 0) << check.stdout << check.stderr;
    }

    TemporaryFolder folder;
};

std::vector<fs::path> documentsIn(const fs::path &top)
{
    std::vector<fs::path> result;
    std::error_code ignored;
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(top, ignored)) {
        if (entry.path().extension() == ".pdf" && entry.is_regular_file())
            result.push_back(entry.path());
    }
    std::ranges::sort(result);
    return result;
}

} // namespace

TEST_F(Fidelity, everyKindOfContentInEveryFrameLooksTheSame)
{
    std::size_t count = 0;
    for (const auto &[name, make] : contents) {
        for (std::size_t frame = 0; frame < frames.size(); ++frame) {
            expectFaithful(make(frames[frame]).write(folder / (name + " " + std::to_string(frame) + ".pdf")), 1, 1);
            ++count;
        }
    }
    EXPECT_GE(count, 100U);
}

TEST_F(Fidelity, onlyWhatTheStampCoversChanges)
{
    for (const auto &[name, make] : contents) {
        for (const std::size_t frame : {0U, 1U, 5U}) {
            const fs::path blank = PDFBuilder().page("", frames[frame]).write(folder / "blank.pdf");
            expectStampOnly(make(frames[frame]).write(folder / (name + ".pdf")), blank);
        }
    }
}

TEST_F(Fidelity, everyWayToStoreADocumentComesOutTheSame)
{
    PDFBuilder builder;
    for (int page = 1; page <= 12; ++page)
        builder.textPage({"Page " + std::to_string(page), "and what it says"}, 30);
    const fs::path plain = builder.write(folder / "plain.pdf");
    const std::vector<std::vector<std::string>> ways{{"--object-streams=generate"}, {"--linearize"}, {"--qdf"},
        {"--stream-data=uncompress"}, {"--recompress-flate", "--compression-level=9"},
        {"--allow-weak-crypto", "--encrypt", "", "owner", "40", "--"},
        {"--allow-weak-crypto", "--encrypt", "", "owner", "128", "--use-aes=n", "--"},
        {"--encrypt", "", "owner", "128", "--use-aes=y", "--"}, {"--encrypt", "", "owner", "256", "--"},
        {"--encrypt", "", "owner", "256", "--", "--object-streams=generate"},
        {"--allow-weak-crypto", "--encrypt", "", "", "128", "--use-aes=y", "--cleartext-metadata", "--"}};
    for (const std::vector<std::string> &way : ways) {
        std::vector<std::string> arguments = way;
        const fs::path stored = folder / "stored.pdf";
        arguments.insert(arguments.end(), {plain, stored});
        const ProcessResult made = runProgram("/usr/bin/qpdf", arguments);
        ASSERT_EQ(made.status, 0) << made.stderr;
        expectFaithful(stored, 1, 12, 36);
        EXPECT_EQ(textOfPDF(folder / "copy.pdf"), textOfPDF(plain));
        EXPECT_EQ(runProgram("/usr/bin/qpdf", {"--is-encrypted", folder / "copy.pdf"}).status, 2);
    }
}

TEST_F(Fidelity, booksOfThisMachineLookTheSame)
{
    std::size_t count = 0;
    for (const char *top : {"/usr/share/R/doc/manual", "/usr/share/doc/lilypond", "/usr/share/doc/libtasn1-doc"}) {
        for (const fs::path &input : documentsIn(top)) {
            const int pages = static_cast<int>(openPDF(input).pageCount());
            for (const int first : {1, pages / 2, pages - 2})
                expectFaithful(input, std::max(first, 1), std::max(first, 1) + 2, 50);
            ++count;
        }
    }
    EXPECT_GT(count, 0U);
}

TEST_F(Fidelity, documentsOfTheGivenFolderLookTheSame)
{
    const char *const given = std::getenv("NOLFA_PDF_FOLDER");
    if (given == nullptr)
        GTEST_SKIP() << "no folder was given: NOLFA_PDF_FOLDER names one";
    std::size_t count = 0;
    for (const fs::path &input : documentsIn(given)) {
        expectFaithful(input, 1, 20, 50);
        ++count;
    }
    std::cout << count << " documents\n";
    EXPECT_GT(count, 0U);
}
