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

fs::path source(std::string_view name)
{
    return fs::path(NOLFA_SOURCE) / "Tests/Fixtures/sources" / name;
}

class OfficeSuiteTest : public ::testing::Test {
protected:
    std::string markdownOf(const fs::path &document)
    {
        return contentOf(service.convert(document, markdown, folder.path(), {}));
    }

    /// Puts a deck's slides into another order, as a user does by dragging: the parts keep their names.
    void reorderSlides(const fs::path &deck, const std::vector<std::string> &ids)
    {
        std::string presentation = partOf(deck, "ppt/presentation.xml");
        const std::size_t start = presentation.find("<p:sldIdLst>");
        const std::size_t end = presentation.find("</p:sldIdLst>");
        ASSERT_LT(start, end);
        ASSERT_NE(end, std::string::npos);
        std::string list = "<p:sldIdLst>";
        for (const std::string &id : ids)
            list += "<p:sldId id=\"" + std::to_string(256 + list.size()) + "\" r:id=\"" + id + "\"/>";
        presentation.replace(start, end - start, list);
        folder.write("reordered/ppt/presentation.xml", presentation);
        const ProcessResult zipped
            = runProgram("/usr/bin/zip", {"-q", deck, "ppt/presentation.xml"}, {}, folder / "reordered");
        ASSERT_EQ(zipped.status, 0) << zipped.stdout << zipped.stderr;
    }

    TemporaryFolder folder;
    ConversionService service = NolfaEngine::makeService(Bundle::main());
};

} // namespace

TEST_F(OfficeSuiteTest, aWorkbookWithDatesFormulasAndMergedCellsIsRead)
{
    EXPECT_EQ(markdownOf(officeDocument(folder.path(), source("book.fods"), "xlsx")),
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

TEST_F(OfficeSuiteTest, aChartLeavesTheCellsOfAWorkbookUnharmed)
{
    const fs::path workbook = officeDocument(folder.path(), source("chart.fods"), "xlsx");
    EXPECT_THAT(partOf(workbook, "xl/charts/chart1.xml"),
        ::testing::AllOf(::testing::HasSubstr("Nord"), ::testing::HasSubstr("Titre du dessin")));
    EXPECT_EQ(markdownOf(workbook),
        "## Relevé\n\n"
        "| Région | Ventes |\n| --- | --- |\n| Nord | 1200 |\n| Sud | 980.25 |\n\n"
        "## Suite\n\n"
        "| « œuvre » | 1201 |\n| --- | --- |\n\n");
}

TEST_F(OfficeSuiteTest, aReorderedDeckIsReadInTheOrderOfThePresentation)
{
    const fs::path deck = officeDocument(folder.path(), source("deck.fodp"), "pptx");
    EXPECT_THAT(partsOf(deck),
        ::testing::IsSupersetOf({"ppt/charts/chart1.xml", "ppt/notesSlides/notesSlide1.xml", "ppt/slides/slide3.xml"}));
    // The other program names the slides' relationships after the masters'.
    reorderSlides(deck, {"rId6", "rId4", "rId5"});
    const std::string relationships = partOf(deck, "ppt/_rels/presentation.xml.rels");
    for (const auto &[id, part] : {std::pair("rId6", 3), std::pair("rId4", 1), std::pair("rId5", 2)}) {
        const std::size_t element = relationships.find("Id=\"" + std::string(id) + "\"");
        ASSERT_NE(element, std::string::npos);
        EXPECT_THAT(relationships.substr(element, relationships.find("/>", element) - element),
            ::testing::HasSubstr("slides/slide" + std::to_string(part) + ".xml"))
            << "the order disagrees with the numbers";
    }
    EXPECT_EQ(markdownOf(deck),
        "## Slide 1\n\n- La courbe\n\n"
        "## Slide 2\n\n- L’été à Liège\n- Un cœur\n- « œuvre »\n\n> Saluer la salle. Puis s’asseoir.\n\n"
        "## Slide 3\n\n- Région\n- Ventes\n- Nord\n- 1 200\n\n");
    // Opened there and written anew, the slides are numbered in this order.
    const std::string again = markdownOf(officeDocument(folder / "again", deck, "pptx"));
    EXPECT_THAT(again, ::testing::StartsWith("## Slide 1\n\n- La courbe\n\n## Slide 2\n\n- L’été à Liège\n"));
    EXPECT_THAT(again, ::testing::HasSubstr("> Saluer la salle. Puis s’asseoir."));
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
