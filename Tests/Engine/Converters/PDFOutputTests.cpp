// Everything that ends in a PDF, or starts from one, through the real tools and through tools that misbehave.

#include "Engine/Converters/DocxToPDFConverter.h"
#include "Engine/Converters/MarkdownToPDFConverter.h"
#include "Engine/Converters/PDFToDocxConverter.h"
#include "Engine/NolfaEngine.h"
#include "Support/Documents.h"
#include "Support/Expect.h"
#include "Support/Pages.h"
#include "Support/Processes.h"
#include "Support/Scopes.h"
#include "Support/StubRecognizer.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <thread>

using namespace nolfa;
using namespace nolfa::testing;
using namespace std::chrono_literals;
using enum DocumentFormat;
namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

constexpr ConversionPair markdownToPDF{markdown, pdf};

class PDFOutputTest : public ::testing::Test {
protected:
    /// A program that does what a shell script says.
    fs::path program(const std::string &name, const std::string &script) const
    {
        const fs::path file = tools.write(name, "#!/bin/sh\n" + script + "\n");
        fs::permissions(file, fs::perms::owner_exec, fs::perm_options::add);
        return file;
    }

    /// What stayed in the folder for temporary files. Without a folder for the session Qt makes itself one there, for
    /// all programs of the user.
    std::vector<std::string> leftovers() const
    {
        std::vector<std::string> names = temporary.names();
        std::erase_if(names, [](const std::string &name) { return name.starts_with("runtime-"); });
        return names;
    }

    fs::path print(const MarkdownToPDFConverter &converter, const fs::path &input) const
    {
        const fs::path output = out / (input.stem().string() + ".pdf");
        converter.convert(input, output, markdownToPDF, {});
        EXPECT_THAT(leftovers(), IsEmpty());
        return output;
    }

    /// Whether Qt made the PDF, and not typst.
    static bool isPrintedByUs(const fs::path &file)
    {
        return runProgram("/usr/bin/pdfinfo", {file}).stdout.find("Creator:         Nolfa") != std::string::npos;
    }

    PandocRunner pandoc = *PandocRunner::resolve(Bundle::main());
    fs::path typst = *MarkdownToPDFConverter::resolveTypst(Bundle::main());
    TemporaryFolder tools;
    TemporaryFolder folder;
    TemporaryFolder out;
    TemporaryFolder temporary;
    EnvironmentScope environment{"TMPDIR", temporary.path()};
};

} // namespace

TEST_F(PDFOutputTest, withTypstAtHandTheEngineMakesThePDF)
{
    const fs::path output = print(MarkdownToPDFConverter(pandoc), folder.write("a.md", "# Titre\n\nDéjà *vu*.\n"));
    EXPECT_FALSE(isPrintedByUs(output));
    EXPECT_EQ(textOfPDF(output), "Titre\nDéjà vu.\n");
    EXPECT_THAT(
        fontsOfPDF(output), ElementsAre("HankenGrotesk-Italic", "HankenGrotesk-Regular", "Newsreader24pt-SemiBold"));
}

TEST_F(PDFOutputTest, aChosenPaperHoldsForBothEngines)
{
    const LocaleScope scope(Locale{.language = "en", .region = "US"});
    const fs::path input = folder.write("a.md", "x\n");
    for (const std::optional<fs::path> &engine : {std::optional<fs::path>(), std::optional<fs::path>("/missing")}) {
        NolfaFormat::resetPaper();
        EXPECT_EQ(openPDF(print(MarkdownToPDFConverter(pandoc, engine), input)).pageSize(0), (Size{612, 792}));
        NolfaFormat::setPaper(NolfaFormat::Paper::a4);
        EXPECT_EQ(openPDF(print(MarkdownToPDFConverter(pandoc, engine), input)).pageSize(0), (Size{595, 842}));
    }
}

TEST_F(PDFOutputTest, aMissingOverrideFallsBack)
{
    const fs::path output = print(MarkdownToPDFConverter(pandoc, "/missing"), folder.write("a.md", "# Titre\n"));
    EXPECT_TRUE(isPrintedByUs(output));
    EXPECT_EQ(textOfPDF(output), "Titre\n");
}

TEST_F(PDFOutputTest, aTypstThatWritesNothingFallsBack)
{
    const fs::path engine = program("typst", ": > \"$3\"");
    EXPECT_TRUE(isPrintedByUs(print(MarkdownToPDFConverter(pandoc, engine), folder.write("a.md", "x\n"))));
}

TEST_F(PDFOutputTest, anEmptyOutputIsRemovedBeforeTheFallback)
{
    const fs::path input = folder.write("a.md", "x\n");
    const fs::path output = out / "a.pdf";
    const PandocRunner stub{program("pandoc",
        "case \"$*\" in *pdf-engine*) : > \"$5\";; *) [ -e '" + output.string()
            + "' ] && exit 1; echo '<p>x</p>';; esac")};
    MarkdownToPDFConverter(stub, typst).convert(input, output, markdownToPDF, {});
    EXPECT_TRUE(isPrintedByUs(output));
}

TEST_F(PDFOutputTest, theArgumentsAreThese)
{
    const fs::path input = folder.write("a.md", "x\n");
    const PandocRunner stub{program("pandoc", "echo \"$*\" >> '" + (tools / "calls").string() + "'; exit 1")};
    expectCase<ConversionError::ToolFailure>(
        [&] { MarkdownToPDFConverter(stub, "/e").convert(input, out / "a.pdf", markdownToPDF, {}); });
    EXPECT_EQ(contentOf(tools / "calls"),
        "-f gfm " + input.string() + " -o " + (out / "a.pdf").string() + " --pdf-engine=/e\n-f gfm -t html5 "
            + input.string() + "\n");
    EXPECT_THAT(out.names(), IsEmpty());
}

TEST_F(PDFOutputTest, aTypstThatHangsFallsBackWithANewLimit)
{
    const fs::path engine = program("typst", "exec sleep 60");
    const PandocRunner impatient{pandoc.binaryURL, 2};
    EXPECT_TRUE(isPrintedByUs(print(MarkdownToPDFConverter(impatient, engine), folder.write("a.md", "x\n"))));
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("a.md"));
}

TEST_F(PDFOutputTest, aStopAfterAFailureIsNoFallback)
{
    const fs::path input = folder.write("a.md", "x\n");
    const fs::path engine = program("typst", "echo x > '" + (tools / "started").string() + "'; exec sleep 60");
    std::stop_source source;
    const std::jthread stopper([&] {
        EXPECT_TRUE(waitUntil(20s, [&] { return fs::exists(tools / "started"); }));
        EXPECT_THAT(folder.names(), ElementsAre("a.md")) << "while typst is at work";
        source.request_stop();
    });
    expectError(ConversionError::cancelled(), [&] {
        MarkdownToPDFConverter(pandoc, engine).convert(input, out / "a.pdf", markdownToPDF, source.get_token());
    });
    EXPECT_THAT(folder.names(), ElementsAre("a.md"));
    EXPECT_THAT(out.names(), IsEmpty());
    EXPECT_THAT(leftovers(), IsEmpty());
}

TEST_F(PDFOutputTest, picturesAreFoundBesideAboveAndAnywhere)
{
    folder.write("texts/été \"1\" $x/pictures/a b.png", png(200, 200));
    folder.write("texts/above.png", png(200, 200));
    tools.write("far.png", png(200, 200));
    const std::string dir = "texts/été \"1\" $x/";
    for (const std::string &link :
        {std::string("pictures/a%20b.png"), std::string("../above.png"), (tools / "far.png").string()}) {
        const fs::path input = folder.write(dir + "a.md", "![](" + link + ")\n");
        const fs::path byTypst = print(MarkdownToPDFConverter(pandoc), input);
        EXPECT_FALSE(isPrintedByUs(byTypst)) << link;
        EXPECT_GT(darkPixels(byTypst, 0), 3000U) << link;
        const fs::path byUs = print(MarkdownToPDFConverter(pandoc, "/missing"), input);
        EXPECT_TRUE(isPrintedByUs(byUs));
        EXPECT_GT(darkPixels(byUs, 0), 3000U) << link;
        EXPECT_THAT(namesIn(input.parent_path()), ElementsAre("a.md", "pictures"));
    }
}

TEST_F(PDFOutputTest, aPictureThatIsMissingFallsBackToItsWords)
{
    const fs::path output = print(MarkdownToPDFConverter(pandoc), folder.write("a.md", "![the chart](no.png)\n"));
    EXPECT_EQ(textOfPDF(output), "the chart\n");
}

TEST_F(PDFOutputTest, aTableOfTypstFlowsOverPages)
{
    std::string text = "| a | b |\n|---|---|\n";
    for (int row = 1; row <= 150; ++row)
        text += "| row " + std::to_string(row) + " | x |\n";
    const fs::path output = print(MarkdownToPDFConverter(pandoc), folder.write("a.md", text + "\nbehind\n"));
    EXPECT_FALSE(isPrintedByUs(output));
    EXPECT_GT(openPDF(output).pageCount(), 2U);
    EXPECT_THAT(textOfPDF(output), HasSubstr("row 150"));
    EXPECT_THAT(textOfPDF(output), HasSubstr("behind"));
}

TEST_F(PDFOutputTest, aFolderThatCannotBeWrittenToServesAsInput)
{
    const fs::path input = folder.write("texts/a.md", "# Titre\n");
    fs::permissions(folder / "texts", fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_EQ(textOfPDF(print(MarkdownToPDFConverter(pandoc), input)), "Titre\n");
    fs::permissions(folder / "texts", fs::perms::owner_all);
}

TEST_F(PDFOutputTest, aTextThatCannotBeReadIsRefused)
{
    expectError(ConversionError::unreadableInput(folder / "no.md"),
        [&] { MarkdownToPDFConverter(pandoc).convert(folder / "no.md", out / "a.pdf", markdownToPDF, {}); });
}

TEST_F(PDFOutputTest, theBundlesTypstComesFirstAndMustBeExecutable)
{
    const std::vector<fs::path> places{folder / "none", program("system", "")};
    EXPECT_EQ(MarkdownToPDFConverter::resolveTypst(Bundle(folder.path()), places), places[1]);
    const fs::path own = folder.write("bin/typst", "");
    EXPECT_EQ(MarkdownToPDFConverter::resolveTypst(Bundle(folder.path()), places), places[1]);
    fs::permissions(own, fs::perms::owner_exec, fs::perm_options::add);
    EXPECT_EQ(MarkdownToPDFConverter::resolveTypst(Bundle(folder.path()), places), own);
    EXPECT_EQ(MarkdownToPDFConverter::resolveTypst(Bundle("/none"), {}), std::nullopt);
    EXPECT_THAT(MarkdownToPDFConverter::systemPlaces(), ElementsAre("/opt/homebrew/bin/typst", "/usr/local/bin/typst"));
}

TEST_F(PDFOutputTest, usableIsWhatHasASize)
{
    EXPECT_FALSE(MarkdownToPDFConverter::isUsableOutput(folder / "no.pdf"));
    EXPECT_FALSE(MarkdownToPDFConverter::isUsableOutput(folder.write("empty.pdf", "")));
    EXPECT_TRUE(MarkdownToPDFConverter::isUsableOutput(folder.write("a.pdf", "x")));
}

TEST_F(PDFOutputTest, aWordReportIsPrintedWithItsPictures)
{
    const fs::path input = reportDocx(folder.path());
    DocxToPDFConverter(pandoc).convert(input, out / "report.pdf", {docx, pdf}, {});
    const std::string text = textOfPDF(out / "report.pdf");
    EXPECT_THAT(text, HasSubstr("Résumé"));
    EXPECT_THAT(text, HasSubstr("chiffre d’affaires"));
    EXPECT_THAT(text, HasSubstr("deux rédactrices"));
    EXPECT_THAT(fontsOfPDF(out / "report.pdf"), Contains("Newsreader24pt-SemiBold"));
    EXPECT_THAT(out.names(), ElementsAre("report.pdf"));
    EXPECT_THAT(leftovers(), IsEmpty());
}

TEST_F(PDFOutputTest, aDamagedWordFileLeavesNothing)
{
    const fs::path input = folder.write("a.docx", "no archive");
    EXPECT_THROW(DocxToPDFConverter(pandoc).convert(input, out / "a.pdf", {docx, pdf}, {}), ConversionError);
    EXPECT_THAT(out.names(), IsEmpty());
}

TEST_F(PDFOutputTest, aPrintedTextComesBackAsWord)
{
    const fs::path printed = print(MarkdownToPDFConverter(pandoc),
        folder.write("a.md", "# Le verger\n\nLes pommes mûres tombent sans bruit dans l’herbe haute.\n"));
    const ConversionService service = NolfaEngine::makeService(Bundle::main());
    const fs::path word = service.convert(printed, docx, std::nullopt, {});
    EXPECT_THAT(partOf(word, "word/document.xml"), HasSubstr("Les pommes mûres tombent sans bruit"));
    EXPECT_THAT(leftovers(), IsEmpty());
}

TEST_F(PDFOutputTest, fontsOfTheBundleAreExactlyThese)
{
    std::vector<std::string> names;
    for (const fs::directory_entry &entry : fs::directory_iterator(Bundle::main().root() / "Fonts")) {
        if (entry.path().extension() != ".ttf")
            continue;
        const ProcessResult scan = runProgram("/usr/bin/fc-scan", {"-f", "%{postscriptname}", entry.path()});
        EXPECT_EQ(scan.stdout, entry.path().stem().string());
        names.push_back(scan.stdout);
    }
    EXPECT_THAT(names,
        ::testing::UnorderedElementsAre("HankenGrotesk-Regular", "HankenGrotesk-Medium", "HankenGrotesk-SemiBold",
            "HankenGrotesk-Bold", "IBMPlexMono-Regular", "IBMPlexMono-Medium", "IBMPlexMono-SemiBold",
            "Newsreader24pt-Regular", "Newsreader24pt-Medium", "Newsreader24pt-SemiBold"));
    for (const std::string family : {"HankenGrotesk", "IBMPlexMono", "Newsreader"})
        EXPECT_THAT(
            contentOf(Bundle::main().root() / "Fonts" / (family + ".LICENSE")), HasSubstr("SIL OPEN FONT LICENSE"));
}
