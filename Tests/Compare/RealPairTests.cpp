// Real documents, read by the real tools.

#include "Compare/ComparisonReport.h"
#include "Compare/DocumentComparer.h"
#include "Engine/NolfaEngine.h"
#include "Support/Documents.h"
#include "Support/Pages.h"
#include "Support/Processes.h"
#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

using namespace nolfa;
using namespace nolfa::testing;
namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

namespace {

constexpr std::string_view contract = R"(# Service agreement

This agreement is made between Orchard Cooperative and Northfield Haulage on 1 March 2026.

## Scope

The Supplier shall carry up to **400 crates** of apples a week from the barn in Lower Wick to the market hall.

The Supplier may use subcontractors only with the Client's written consent.

![The route](route.png)

## Price

| Season | Crates | Price |
|--------|--------|-------|
| Spring | 120    | £1.20 |
| Autumn | 400    | £0.95 |

## Term

1. This agreement runs for twelve months.
2. Either party may end it with three months' notice.
    - A breach that isn't mended ends it at once.

> Nothing in this agreement limits liability for death.
)";

std::string replaced(std::string text, std::string_view before, std::string_view after)
{
    const std::size_t at = text.find(before);
    EXPECT_NE(at, std::string::npos) << before;
    return text.replace(at, before.size(), after);
}

std::string revisedContract()
{
    std::string text = replaced(std::string(contract), "400 crates** of apples", "450 crates** of apples and pears");
    text = replaced(text, "The Supplier may use subcontractors only with the Client's written consent.\n\n", "");
    text = replaced(text, "| Autumn | 400    | £0.95 |", "| Autumn | 450    | £0.95 |");
    return replaced(text, "twelve months.\n", "two years.\n2. It may be renewed once.\n");
}

/// What a report says under its summary.
std::string changesIn(const DocumentComparison &comparison)
{
    const std::string report = ComparisonReport::markdown(comparison);
    const std::size_t start = report.find("| Similarity |");
    return report.substr(report.find("\n\n", start) + 2);
}

class RealPair : public ::testing::Test {
protected:
    RealPair() { folder.write("route.png", png(20, 10)); }

    fs::path word(std::string_view name, std::string_view text) const
    {
        return pandocDocument(folder.path(), name, text);
    }

    fs::path converted(const fs::path &input, DocumentFormat target) const
    {
        return service.convert(input, target, std::nullopt, {});
    }

    DocumentComparison compare(const fs::path &left, const fs::path &right) const
    {
        return DocumentComparer::compare(left, right, service);
    }

    /// The pages of a PDF as pictures, in a PDF of their own.
    fs::path scanned(const fs::path &pdf) const
    {
        const fs::path stem = folder / (pdf.stem().string() + "-scan");
        EXPECT_EQ(runProgram("/usr/bin/pdftoppm", {"-r", "200", "-gray", "-singlefile", "-png", pdf, stem}).status, 0);
        return converted(stem.string() + ".png", DocumentFormat::pdf);
    }

    LanguageScope language{NolfaLanguage::en};
    LocaleScope locale{{.language = "en", .region = "GB"}};
    TemporaryFolder folder;
    ConversionService service = NolfaEngine::makeService(Bundle::main());
};

} // namespace

TEST_F(RealPair, aWordFileIsIdenticalToItselfAndToACopyPicturesIncluded)
{
    const fs::path original = word("v1.docx", contract);
    EXPECT_TRUE(compare(original, original).isIdentical());
    const fs::path copy = folder / "a copy of it.docx";
    fs::copy_file(original, copy);
    const DocumentComparison comparison = compare(original, copy);
    EXPECT_TRUE(comparison.isIdentical()) << changesIn(comparison);
}

TEST_F(RealPair, twoRevisionsOfAContractInWord)
{
    const DocumentComparison comparison = compare(word("v1.docx", contract), word("v2.docx", revisedContract()));
    EXPECT_EQ(changesIn(comparison), R"(## Scope

The Supplier shall carry up to ~~**400~~ ++**450++ crates** of apples ++and pears++ a week from the barn in Lower Wick to the market hall.

~~The Supplier may use subcontractors only with the Client’s written consent.~~

## Price

| Autumn | ~~400~~ ++450++ | £0. 95 |

## Term

This agreement runs for ~~twelve months.~~ ++two years.++

++- It may be renewed once.++

---

Nolfa 0.2.2 · nolfa.pelgo.app
)");
}

TEST_F(RealPair, aWordFileAndThePDFMadeOfItDifferInWhatAPageDoesNotKeep)
{
    // Headings, and a paragraph under each, come back from the page as they were.
    const std::string body = "The words of this paragraph run over several lines, so that most lines of the page have "
                             "the size of the body, and the others are known as headings by theirs. Some of them are ";
    const fs::path plain
        = word("plain.docx", "# Terms\n\n" + body + "plain.\n\n## Scope\n\n" + body + "**bold** or *slanted*.\n");
    const DocumentComparison same = compare(plain, converted(plain, DocumentFormat::pdf));
    EXPECT_TRUE(same.isIdentical()) << changesIn(same);

    // On a page, rows have no pipes and neighbouring paragraphs no empty line between them. The words are the same.
    const fs::path rich
        = word("rich.docx", "# Prices\n\nPer crate:\n\n| Season | Price |\n|---|---|\n| Spring | £1 |\n");
    const DocumentComparison different = compare(rich, converted(rich, DocumentFormat::pdf));
    EXPECT_THAT(changesIn(different), HasSubstr("++Per crate: Season Price Spring £1++"));
    EXPECT_THAT(changesIn(different), HasSubstr("~~| Spring | £1    |~~"));
}

TEST_F(RealPair, aPDFTellsThePagesOfItsChanges)
{
    std::string text = "# First\n\nThese words stay as they are.\n";
    for (int i = 0; i < 60; ++i)
        text += "\nA paragraph that fills the page, number " + std::to_string(i) + ".\n";
    text += "\n## Last\n\nThese words are on another page and change.\n";
    const fs::path left = converted(folder.write("a.md", text), DocumentFormat::pdf);
    const fs::path right
        = converted(folder.write("b.md", replaced(text, "page and change", "page and changed")), DocumentFormat::pdf);
    const DocumentComparison comparison = compare(left, right);
    ASSERT_THAT(comparison.sections, SizeIs(1));
    EXPECT_GT(comparison.sections[0].page().value_or(0), 1);
    EXPECT_EQ(comparison.sections[0].heading, "Last");
    EXPECT_EQ(comparison.sections[0].title(), "Page " + std::to_string(openPDF(left).pageCount()));
    EXPECT_EQ(comparison.summary.wordsAdded, 1U);
}

TEST_F(RealPair, twoScansAreReadAndCompared)
{
    const auto page = [this](const char *name, const char *number) {
        const std::string text = "# Crates\n\nThe harvest of that year began in the last week of August, earlier than "
                                 "anyone could remember. By the second Sunday, "
            + std::string(number) + " crates stood in the barn.\n";
        return scanned(converted(folder.write(name, text), DocumentFormat::pdf));
    };
    const DocumentComparison comparison = compare(page("a.md", "832"), page("b.md", "947"));
    EXPECT_THAT(changesIn(comparison), HasSubstr("Sunday, ~~832~~ ++947++ crates stood in the barn."));
    EXPECT_EQ(comparison.changeCount(), 1U);
    EXPECT_EQ(comparison.sections[0].title(), "Page 1");
}

TEST_F(RealPair, theReportComesOnBothPapersAndInBothLanguages)
{
    const DocumentComparison comparison = compare(word("v1.docx", contract), word("v2.docx", revisedContract()));
    const fs::path file = folder / "report.pdf";
    NolfaFormat::setPaper(NolfaFormat::Paper::a4);
    ComparisonReport::write(comparison, file, ReportFormat::pdf);
    EXPECT_EQ(openPDF(file).pageSize(0), (Size{595, 842}));
    EXPECT_THAT(textOfPDF(file), HasSubstr("Comparison report"));
    EXPECT_THAT(textOfPDF(file), HasSubstr("SUMMARY"));
    EXPECT_THAT(textOfPDF(file), HasSubstr("Nolfa 0.2.2 · nolfa.pelgo.app"));
    EXPECT_THAT(fontsOfPDF(file), ::testing::Contains("HankenGrotesk-Regular"));
    const LanguageScope french(NolfaLanguage::fr);
    NolfaFormat::setPaper(NolfaFormat::Paper::usLetter);
    ComparisonReport::write(comparison, file, ReportFormat::pdf);
    EXPECT_EQ(openPDF(file).pageSize(0), (Size{612, 792}));
    EXPECT_THAT(textOfPDF(file), HasSubstr("Rapport de comparaison"));
    EXPECT_THAT(textOfPDF(file), HasSubstr("RÉSUMÉ"));
    EXPECT_THAT(textOfPDF(file), Not(HasSubstr("Summary")));
}

TEST_F(RealPair, theReportTakesWhateverTextThereIs)
{
    const std::string word(5000, 'x');
    const fs::path left = folder.write("a.md", "plain\n");
    const fs::path right = folder.write("b.md",
        "plain\n\n" + word
            + "\n\n🍎👨‍👩‍👧 שלום 漢字 <script>&amp;\n\n```\ncode\n\x01\x02\n```\n\n| a | b |\n");
    const fs::path file = folder / "report.pdf";
    ComparisonReport::write(compare(left, right), file, ReportFormat::pdf);
    EXPECT_THAT(textOfPDF(file), HasSubstr("<script>&amp;"));
    EXPECT_GE(openPDF(file).pageCount(), 2U);
}
