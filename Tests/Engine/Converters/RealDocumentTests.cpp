// Whole documents through the real tools.

#include "Engine/NolfaEngine.h"
#include "Engine/PandocRunner.h"
#include "Support/Documents.h"
#include "Support/Expect.h"
#include "Support/Processes.h"
#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"

#include <algorithm>
#include <fstream>
#include <future>
#include <gmock/gmock.h>
#include <iterator>
#include <thread>

using namespace nolfa;
using namespace nolfa::testing;
using namespace std::chrono_literals;
using enum DocumentFormat;
namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

class RealDocumentTest : public ::testing::Test {
protected:
    fs::path convert(const fs::path &input, DocumentFormat target, const std::optional<fs::path> &into = std::nullopt)
    {
        fs::path output = service.convert(input, target, into, {});
        EXPECT_THAT(temporary.names(), IsEmpty()) << "scratch is left";
        return output;
    }

    void expectReport(const std::string &text) const
    {
        EXPECT_THAT(text, HasSubstr("# Résumé\n"));
        EXPECT_THAT(text, HasSubstr("*chiffre d’affaires*"));
        EXPECT_THAT(text, HasSubstr("**12 %**"));
        EXPECT_THAT(text, HasSubstr("[le site](https://example.org/été)"));
        EXPECT_THAT(text, HasSubstr("Comptes arrêtés au 31 août, « avant impôt »."));
        EXPECT_THAT(text, HasSubstr("[^1]: "));
        EXPECT_THAT(text, HasSubstr("1.  Embaucher\n"));
        EXPECT_THAT(text, HasSubstr("    - deux rédactrices\n"));
        EXPECT_THAT(text, HasSubstr("      - à Liège\n"));
        EXPECT_THAT(text, HasSubstr("    - un œnologue\n"));
        EXPECT_THAT(text, HasSubstr("> Qui va à la chasse perd sa place."));
        EXPECT_THAT(text, HasSubstr("| Nord   | 1 200  | +3 %  |"));
        EXPECT_THAT(text, HasSubstr("total = somme(ventes)"));
    }

    TemporaryFolder folder;
    TemporaryFolder temporary;
    EnvironmentScope environment{"TMPDIR", temporary.path()};
    ConversionService service = NolfaEngine::makeService(Bundle::main());
};

/// The files below a folder, as paths from there.
std::vector<std::string> filesBelow(const fs::path &folder)
{
    std::vector<std::string> files;
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file())
            files.push_back(fs::relative(entry.path(), folder));
    }
    std::ranges::sort(files);
    return files;
}

/// The typst that a pandoc of ours has started, or 0.
pid_t typstAtWork()
{
    const std::string typst = Bundle::main().resource("typst", {}, "bin")->string() + ' ';
    for (const auto &[process, command] : commandLines()) {
        if (command.starts_with(typst))
            return process;
    }
    return 0;
}

} // namespace

TEST_F(RealDocumentTest, aWordReportBecomesMarkdownWithItsPicturesBesideIt)
{
    const fs::path input = reportDocx(folder.path());
    const std::string before = contentOf(input);
    const fs::path output = convert(input, markdown);
    EXPECT_THAT(folder.names(), ElementsAre("report-media", "report.docx", "report.md"));
    EXPECT_EQ(contentOf(input), before);

    const std::string text = contentOf(output);
    expectReport(text);
    const std::vector<std::string> pictures = filesBelow(folder / "report-media");
    ASSERT_EQ(pictures.size(), 2U);
    for (const std::string &picture : pictures) {
        EXPECT_TRUE(picture.starts_with("media/") && picture.ends_with(".png")) << picture;
        EXPECT_THAT(text, HasSubstr((folder / "report-media" / picture).string()));
    }
    std::vector<std::string> bytes;
    std::ranges::transform(pictures, std::back_inserter(bytes),
        [&](const std::string &picture) { return contentOf(folder / "report-media" / picture); });
    EXPECT_THAT(bytes, ::testing::UnorderedElementsAre(png(160, 90, 1), png(24, 24, 2)));
}

TEST_F(RealDocumentTest, aSecondConversionTakesTheNextNameAndItsOwnMedia)
{
    const fs::path input = reportDocx(folder.path());
    convert(input, markdown);
    EXPECT_EQ(convert(input, markdown), folder / "report 2.md");
    EXPECT_THAT(
        folder.names(), ElementsAre("report 2-media", "report 2.md", "report-media", "report.docx", "report.md"));
    EXPECT_THAT(contentOf(folder / "report 2.md"), HasSubstr((folder / "report%202-media").string()));
}

TEST_F(RealDocumentTest, aWordFileWithoutPicturesLeavesNoMediaFolder)
{
    pandocDocument(folder.path(), "plain.docx", "Only *text*.");
    convert(folder / "plain.docx", markdown);
    EXPECT_THAT(folder.names(), ElementsAre("plain.docx", "plain.md"));
}

TEST_F(RealDocumentTest, aWordFileWrittenByAnOfficeSuiteBecomesMarkdown)
{
    fs::copy_file(fs::path(NOLFA_SOURCE) / "Tests/Fixtures/minutes.docx", folder / "minutes.docx");
    const std::string text = contentOf(convert(folder / "minutes.docx", markdown));
    EXPECT_THAT(text, HasSubstr("# Procès-verbal de l’assemblée"));
    EXPECT_THAT(text, HasSubstr("- Présents"));
    EXPECT_THAT(text, HasSubstr("Zoé Lefèvre"));
    EXPECT_THAT(text, HasSubstr("| Poste     | Prévu   | Réel    |"));
    EXPECT_THAT(text, HasSubstr("[^1]: Le quorum est atteint."));
    EXPECT_THAT(text, HasSubstr((folder / "minutes-media").string()));
    EXPECT_EQ(filesBelow(folder / "minutes-media").size(), 1U);
}

TEST_F(RealDocumentTest, markdownBecomesWordWithThePicturesBesideIt)
{
    folder.write("texts/pictures/été.png", png(60, 40, 3));
    const fs::path input = folder.write("texts/note.md",
        "# Été\n\n- a\n  - b\n    1. c\n\n| x | y |\n|---|--:|\n| 1 | **2** |\n\n![Un été](pictures/été.png)\n\n"
        "Voir[^1].\n\n[^1]: La note.\n");
    const fs::path output = convert(input, docx, folder.path());
    EXPECT_EQ(output, folder / "note.docx");
    const std::vector<std::string> parts = partsOf(output);
    EXPECT_EQ(std::ranges::count_if(parts, [](const std::string &part) { return part.ends_with(".png"); }), 1);
    const std::string body = partOf(output, "word/document.xml");
    EXPECT_THAT(body, HasSubstr("Été"));
    EXPECT_THAT(body, HasSubstr("<w:tbl>"));
    EXPECT_THAT(body, HasSubstr("<w:footnoteReference"));
    EXPECT_THAT(partOf(output, "word/footnotes.xml"), HasSubstr("La note."));
}

TEST_F(RealDocumentTest, wordToMarkdownAndBackKeepsTheText)
{
    const fs::path there = convert(reportDocx(folder.path()), markdown);
    const fs::path back = convert(there, docx);
    EXPECT_EQ(back, folder / "report 2.docx");
    const fs::path again = convert(back, markdown);
    EXPECT_EQ(again, folder / "report 2.md");
    expectReport(contentOf(again));
    EXPECT_EQ(filesBelow(folder / "report 2-media").size(), 2U) << "pictures came along";
}

TEST_F(RealDocumentTest, markdownBecomesSlides)
{
    const fs::path input = folder.write("deck.md", "# Première\n\n- un\n- deux\n\n# Deuxième\n\nTexte\n");
    const fs::path output = convert(input, pptx);
    EXPECT_THAT(partOf(output, "ppt/slides/slide1.xml"), HasSubstr("Première"));
    EXPECT_THAT(partOf(output, "ppt/slides/slide2.xml"), HasSubstr("Deuxième"));
}

TEST_F(RealDocumentTest, wordBecomesSlidesThroughTheHubWithItsPictures)
{
    const fs::path output = convert(reportDocx(folder.path()), pptx);
    EXPECT_THAT(folder.names(), ElementsAre("report.docx", "report.pptx")) << "media of the hub don't stay";
    std::string slides;
    std::size_t pictures = 0;
    for (const std::string &part : partsOf(output)) {
        if (part.starts_with("ppt/slides/slide"))
            slides += partOf(output, part);
        pictures += part.ends_with(".png") ? 1U : 0U;
    }
    EXPECT_THAT(slides, HasSubstr("Résumé"));
    EXPECT_THAT(slides, HasSubstr("Québec"));
    EXPECT_THAT(slides, HasSubstr("<a:tbl>"));
    EXPECT_EQ(pictures, 1U) << "pandoc leaves pictures inside a line of text out of slides";
}

TEST_F(RealDocumentTest, anEmptyTextIsAWordFileAllTheSame)
{
    const fs::path output = convert(folder.write("empty.md", ""), docx);
    EXPECT_THAT(partOf(output, "word/document.xml"), HasSubstr("<w:body>"));
}

TEST_F(RealDocumentTest, aTextThatIsNotUTF8IsTakenForLatin1)
{
    const fs::path output = convert(folder.write("latin.md", "caf\xE9"), docx);
    EXPECT_THAT(partOf(output, "word/document.xml"), HasSubstr("café"));
}

TEST_F(RealDocumentTest, anArchiveThatIsNoWordFileIsRefused)
{
    folder.write("package/a.txt", "x");
    ASSERT_EQ(runProgram("/usr/bin/zip", {"-q", "-r", folder / "other.docx", "package"}, {}, folder.path()).status, 0);
    const auto failure = expectCase<ConversionError::ToolFailure>(
        [&] { (void)service.convert(folder / "other.docx", markdown, std::nullopt, {}); });
    EXPECT_FALSE(failure.summary.empty());
    EXPECT_THAT(folder.names(), ElementsAre("other.docx", "package"));
}

TEST_F(RealDocumentTest, namesOfEveryKindGoThrough)
{
    const fs::path made = reportDocx(folder.path());
    const fs::path names = folder / "names";
    fs::create_directory(names);
    for (const char *stem :
        {"deux mots", "it's \"quoted\"", "-o", "line\nfeed", "caf\xE9", "été", "%41 $HOME `x` *?"}) {
        const fs::path input = names / (std::string(stem) + ".docx");
        fs::copy_file(made, input);
        const fs::path output = convert(input, markdown);
        EXPECT_EQ(output, names / (std::string(stem) + ".md"));
        EXPECT_THAT(contentOf(output), HasSubstr("# Résumé"));
        const std::vector<std::string> parts = partsOf(convert(input, pptx));
        EXPECT_TRUE(std::ranges::any_of(parts, [](const std::string &part) { return part.ends_with(".png"); })) << stem;
    }
}

TEST_F(RealDocumentTest, linksToPicturesHoldWhateverTheName)
{
    const fs::path made = reportDocx(folder.path());
    for (const char *stem :
        {"deux mots", "it's \"quoted\"", "(a) [b] {c} <d>", "line\nfeed", "%41 #1?", "a|b\\c&amp;"}) {
        const fs::path input = folder / (std::string(stem) + ".docx");
        fs::copy_file(made, input);
        const fs::path back = convert(convert(input, markdown), docx);
        const std::vector<std::string> parts = partsOf(back);
        EXPECT_EQ(std::ranges::count_if(parts, [](const std::string &part) { return part.ends_with(".png"); }), 2)
            << stem;
    }
}

TEST_F(RealDocumentTest, aTypstStartedByAPandocThatIsStoppedDiesWithIt)
{
    // Enough text to keep typst busy for a while.
    std::string text;
    for (int paragraph = 0; paragraph < 40'000; ++paragraph)
        text += "Paragraph " + std::to_string(paragraph) + " of a long text that *goes* on and on.\n\n";
    const fs::path input = folder.write("long.md", text);
    const std::string engine = "--pdf-engine=" + Bundle::main().resource("typst", {}, "bin")->string();

    std::stop_source source;
    const auto run = std::async(std::launch::async, [&] {
        expectError(ConversionError::cancelled(), [&] {
            (void)PandocRunner::resolve(Bundle::main())
                ->run({"-f", "gfm", input, "-o", folder / "long.pdf", engine}, std::nullopt, source.get_token(),
                    folder.path());
        });
    });
    pid_t typst = 0;
    EXPECT_TRUE(waitUntil(60s, [&] { return (typst = typstAtWork()) != 0; }));
    source.request_stop();
    run.wait();
    EXPECT_TRUE(waitUntil(1s, [typst] { return !isAlive(typst); }));
}
