// The program as a shell sees it.

#include "Platform/JSON.h"
#include "Support/Documents.h"
#include "Support/PDFBuilder.h"
#include "Support/Pages.h"
#include "Support/Processes.h"
#include "Support/TemporaryFolder.h"

#include <algorithm>
#include <gmock/gmock.h>

using namespace nolfa;
using namespace nolfa::testing;
namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

ProcessResult nolfaCli(std::vector<std::string> arguments, const std::vector<std::string> &environment = {"LC_ALL=C"},
    const std::optional<fs::path> &folder = std::nullopt)
{
    return runProgram(commandLineProgram(), std::move(arguments), environment, folder);
}

} // namespace

TEST(Program, convertsAndPrintsThePath)
{
    const TemporaryFolder folder;
    const fs::path input = reportDocx(folder.path());
    EXPECT_EQ(nolfaCli({"convert", input, "--to", "markdown"}),
        (ProcessResult{0, (folder / "report.md").string() + "\n", ""}));
    EXPECT_THAT(folder.names(), ElementsAre("report-media", "report.docx", "report.md"));
}

TEST(Program, convertsIntoAnotherFolderFromWhereTheUserIs)
{
    const TemporaryFolder folder;
    folder.write("in/a.md", "# A");
    fs::create_directory(folder / "out");
    EXPECT_EQ(nolfaCli({"convert", "in/a.md", "--to", "docx", "--into", "out"}, {}, folder.path()),
        (ProcessResult{0, (folder / "out/a.docx").string() + "\n", ""}));
    EXPECT_THAT(namesIn(folder / "in"), ElementsAre("a.md"));
}

TEST(Program, findsPicturesWithAccentsWhateverTheLocale)
{
    const TemporaryFolder folder;
    folder.write("été.png", png(8, 8));
    const fs::path input = folder.write("a.md", "![x](été.png)");
    for (const char *locale : {"LC_ALL=C", "LC_ALL=C.UTF-8", "LC_ALL=xx_XX"}) {
        ASSERT_EQ(nolfaCli({"convert", input, "--to", "docx"}, {locale}).status, 0);
        const std::vector<std::string> parts = partsOf(folder / "a.docx");
        EXPECT_TRUE(std::ranges::any_of(parts, [](const std::string &part) { return part.ends_with(".png"); }));
        fs::remove(folder / "a.docx");
    }
}

TEST(Program, speaksTheMachinesLanguageUnlessTold)
{
    const std::string english
        = "x.foo: Nolfa couldn't read x.foo. Check that the file is still there and is not damaged.\n";
    const std::string french
        = "x.foo: Nolfa n’a pas pu lire x.foo. Vérifiez que le fichier est toujours là et qu’il n’est pas endommagé.\n";
    const std::vector<std::string> words{"convert", "x.foo", "--to", "markdown"};
    EXPECT_EQ(nolfaCli(words), (ProcessResult{1, "", english}));
    EXPECT_EQ(nolfaCli(words, {"LC_ALL=fr_BE.UTF-8"}), (ProcessResult{1, "", french}));
    EXPECT_EQ(nolfaCli({"--lang", "fr", "convert", "x.foo", "--to", "markdown"}), (ProcessResult{1, "", french}));
    EXPECT_EQ(
        nolfaCli({"convert", "x.foo", "--to", "markdown", "--lang", "en"}, {"LC_ALL=fr_BE.UTF-8"}).stderr, english);
}

TEST(Program, wrongUsageEndsWithTwo)
{
    const ProcessResult result = nolfaCli({"convert"});
    EXPECT_EQ(result, (ProcessResult{2, "", "No file to convert was given. See nolfa-cli --help.\n"}));
}

TEST(Program, helpAndVersionAreResults)
{
    EXPECT_EQ(nolfaCli({"--help"}).status, 0);
    EXPECT_THAT(nolfaCli({"--help"}).stdout, HasSubstr("Usage: nolfa-cli VERB"));
    EXPECT_THAT(nolfaCli({"--version"}).stdout, HasSubstr("Nolfa "));
}

TEST(Program, stampsACopyAndPrintsItsPath)
{
    const TemporaryFolder folder;
    const fs::path input = PDFBuilder().textPage({"body"}).write(folder / "contrat.pdf");
    const std::string before = contentOf(input);
    const std::vector<std::string> words{
        "watermark", input, "--text", "Épreuve", "--output", folder / "out.pdf", "--placement", "horizontalCenter"};
    for (const char *locale : {"LC_ALL=C", "LC_ALL=fr_FR.UTF-8", "LC_ALL=xx_XX"})
        EXPECT_EQ(nolfaCli(words, {locale}), (ProcessResult{0, (folder / "out.pdf").string() + "\n", ""}));
    EXPECT_THAT(textOfPDF(folder / "out.pdf"), HasSubstr("Épreuve"));
    EXPECT_EQ(contentOf(input), before);
}

TEST(Program, aStampThatFailsHasASentence)
{
    const TemporaryFolder folder;
    const fs::path input = PDFBuilder().textPage({"body"}).write(folder / "contrat.pdf");
    EXPECT_EQ(nolfaCli({"watermark", input, "--text", "x", "--output", input}),
        (ProcessResult{1, "", "contrat.pdf: The conversion failed. Nolfa couldn't open that location for writing.\n"}));
    EXPECT_EQ(nolfaCli({"watermark", folder / "no.pdf", "--text", "x", "--output", folder / "out.pdf"}).status, 1);
    EXPECT_THAT(folder.names(), ElementsAre("contrat.pdf"));
}

TEST(Program, listsWhatIsOnOffer)
{
    const ProcessResult table = nolfaCli({"formats"});
    EXPECT_THAT(table.stdout, HasSubstr("docx      → markdown  EXCELLENT\n"));
    EXPECT_EQ(table.stderr, "");
    const std::optional<JSON> json = JSON::parse(nolfaCli({"formats", "--json"}).stdout);
    ASSERT_TRUE(json);
    EXPECT_EQ(std::get<JSON::Array>(json->find("routes")->value).size(), 20U);
}

TEST(Program, comparesAndWritesTheReport)
{
    const TemporaryFolder folder;
    folder.write("old.md", "# T\n\none two three\n");
    folder.write("new.md", "# T\n\none two four\n");
    EXPECT_EQ(nolfaCli({"compare", "old.md", "new.md", "--report", "r.pdf"}, {}, folder.path()),
        (ProcessResult{0, (folder / "r.pdf").string() + "\n", ""}));
    EXPECT_THAT(contentOf(folder / "r.pdf"), ::testing::StartsWith("%PDF-"));
    const ProcessResult french = nolfaCli({"compare", "old.md", "new.md", "--lang", "fr"}, {}, folder.path());
    EXPECT_THAT(french.stdout, HasSubstr("# Rapport de comparaison\n"));
    EXPECT_THAT(french.stdout, HasSubstr("\none two ~~three~~ ++four++\n"));
    const std::optional<JSON> json
        = JSON::parse(nolfaCli({"compare", "old.md", "old.md", "--json"}, {}, folder.path()).stdout);
    ASSERT_TRUE(json);
    EXPECT_EQ(json->find("isIdentical")->value, JSON(true).value);
    EXPECT_THAT(folder.names(), ElementsAre("new.md", "old.md", "r.pdf"));
}

TEST(Program, runsFromAnotherPlaceOnceInstalled)
{
    const TemporaryFolder folder;
    const fs::path build = fs::path(NOLFA_BIN).parent_path();
    const ProcessResult installed
        = runProgram("/usr/bin/cmake", {"--install", build, "--prefix", folder / "opt/nolfa"});
    ASSERT_EQ(installed.status, 0) << installed.stderr;
    const fs::path input = folder.write("a.md", "# A");
    EXPECT_EQ(runProgram(folder / "opt/nolfa/bin/nolfa-cli", {"convert", input, "--to", "docx"}),
        (ProcessResult{0, (folder / "a.docx").string() + "\n", ""}));
}

TEST(Program, aReaderThatGoesAwayLosesNothing)
{
    const TemporaryFolder folder;
    const fs::path one = folder.write("a.md", "# A");
    const fs::path two = folder.write("b.md", "# B");
    const std::string script = "{ '" + commandLineProgram().string() + "' convert '" + one.string() + "' '"
        + two.string() + "' --to docx; echo $? >&2; } | true";
    EXPECT_EQ(runProgram("/bin/sh", {"-c", script}).stderr, "1\n");
    EXPECT_THAT(folder.names(), ElementsAre("a.docx", "a.md", "b.docx", "b.md"));
}
