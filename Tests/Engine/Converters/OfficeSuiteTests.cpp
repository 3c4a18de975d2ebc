// Documents that another program wrote, and ours in its hands.

#include "Engine/NolfaEngine.h"
#include "Support/Documents.h"
#include "Support/Processes.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

using namespace nolfa;
using namespace nolfa::testing;
using enum DocumentFormat;
namespace fs = std::filesystem;

namespace {

class OfficeSuiteTest : public ::testing::Test {
protected:
    std::string markdownOf(const fs::path &document)
    {
        return contentOf(service.convert(document, markdown, folder.path(), {}));
    }

    TemporaryFolder folder;
    ConversionService service = NolfaEngine::makeService(Bundle::main());
};

} // namespace

TEST_F(OfficeSuiteTest, aWorkbookWithDatesFormulasAndMergedCellsIsRead)
{
    const fs::path source = fs::path(NOLFA_SOURCE) / "Tests/Fixtures/sources/book.fods";
    EXPECT_EQ(markdownOf(officeDocument(folder.path(), source, "xlsx")),
        "## Été & hiver\n\n"
        "| Région | Ventes | Le | Vrai |\n"
        "| --- | --- | --- | --- |\n"
        // The date's format is one of the file's own: it stays a number.
        "| Nord \\| « œuvre » | 1200.5 | 45000 | 1 |\n"
        "| fusion |  | 2401 |  |\n\n"
        "## Deux\n\n"
        "| 0.1 |\n"
        "| --- |\n\n");
}

TEST_F(OfficeSuiteTest, aWorkbookOfOursOpensWithTheSameCells)
{
    const fs::path input = folder.write("a.md",
        "| Région | n | mot |\n|---|---|---|\n| été & « œuvre » | 3.50 | 007 |\n|  | 1e3 | <b>\"x\"</b> |\n\n"
        "| zweite |\n|---|\n| 5 |\n");
    const fs::path workbook = service.convert(input, xlsx, std::nullopt, {});
    // Comma, double quote, UTF-8, from the first row, all sheets.
    const fs::path first
        = officeDocument(folder.path(), workbook, "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,false");
    EXPECT_EQ(contentOf(first), "Région,n,mot\nété & « œuvre »,3.5,7\n,1000,\"<b>\"\"x\"\"</b>\"\n");
    // Saved again by the other program, it is still the same to us; numbers in their shortest form.
    EXPECT_EQ(markdownOf(officeDocument(folder.path(), workbook, "xlsx")),
        "## Sheet1\n\n| Région | n | mot |\n| --- | --- | --- |\n| été & « œuvre » | 3.5 | 7 |\n|  | 1000 | "
        "<b>\"x\"</b> |\n\n"
        "## Sheet2\n\n| zweite |\n| --- |\n| 5 |\n\n");
}

TEST_F(OfficeSuiteTest, aDeckWithNotesAndATableIsRead)
{
    const fs::path made = pandocDocument(folder.path(), "deck.pptx",
        "# Première\n\n- un œuf\n    - deux\n\n::: notes\nDire bonjour.\n:::\n\n# Deuxième\n\n| a | b |\n|---|---|\n| "
        "1 | 2 |\n");
    // The number of the page is a field in the notes, and its text counts.
    const std::string expected = "## Slide 1\n\n- Première\n- un œuf\n- deux\n\n> Dire bonjour. 1\n\n"
                                 "## Slide 2\n\n- Deuxième\n- a\n- b\n- 1\n- 2\n\n";
    EXPECT_EQ(markdownOf(made), expected);
    const std::string again = markdownOf(officeDocument(folder.path(), made, "pptx"));
    for (const char *line :
        {"- Première\n", "- un œuf\n", "- deux\n", "> Dire bonjour.", "## Slide 2\n\n- Deuxième\n", "- 1\n"})
        EXPECT_THAT(again, ::testing::HasSubstr(line));
}

TEST_F(OfficeSuiteTest, whatGoesThroughTheHubOpensThere)
{
    const fs::path input = folder.write("a.md", "| a | b |\n|---|---|\n| été | 2 |\n");
    const fs::path workbook = service.convert(input, xlsx, std::nullopt, {});
    const fs::path word = service.convert(workbook, docx, std::nullopt, {});
    const std::string text = contentOf(officeDocument(folder.path(), word, "txt:Text (encoded):UTF8"));
    EXPECT_THAT(text, ::testing::HasSubstr("été"));
    const fs::path back = service.convert(word, xlsx, std::nullopt, {});
    EXPECT_EQ(markdownOf(back), "| a | b |\n| --- | --- |\n| été | 2 |\n\n");
}
