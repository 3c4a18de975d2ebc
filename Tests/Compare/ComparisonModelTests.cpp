#include "Compare/DocumentComparison.h"

#include "Support/Scopes.h"

#include <gmock/gmock.h>

using namespace nolfa;
using nolfa::testing::LanguageScope;
using nolfa::testing::LocaleScope;
using ::testing::ElementsAre;

namespace {

Block paragraph(std::string text, std::size_t index = 0, std::optional<std::int64_t> page = std::nullopt)
{
    return {BlockKind::paragraph(), std::move(text), index, page};
}

ComparisonSection section(std::optional<std::int64_t> left, std::optional<std::int64_t> right,
    std::optional<std::string> heading = std::nullopt)
{
    return {.id = 0,
        .heading = std::move(heading),
        .leftPage = left,
        .rightPage = right,
        .changes = {Change::inserted(paragraph("one two"))}};
}

} // namespace

TEST(Block, isPrintedWithItsMark)
{
    const auto line = [](BlockKind kind) { return Block(kind, "x", 0).markdownLine(); };
    EXPECT_EQ(line(BlockKind::heading(1)), "# x");
    EXPECT_EQ(line(BlockKind::heading(6)), "###### x");
    EXPECT_EQ(line(BlockKind::listItem(0)), "- x");
    EXPECT_EQ(line(BlockKind::listItem(2)), "    - x");
    EXPECT_EQ(line(BlockKind::listItem(-1)), "- x");
    EXPECT_EQ(line(BlockKind::quote()), "> x");
    EXPECT_EQ(line(BlockKind::paragraph()), "x");
    EXPECT_EQ(line(BlockKind::tableRow()), "x");
    EXPECT_EQ(line(BlockKind::code()), "x");
}

TEST(Block, aHeadingsLevelIsClampedInPrint)
{
    EXPECT_EQ(Block(BlockKind::heading(9), "x", 0).markdownLine(), "###### x");
    EXPECT_EQ(Block(BlockKind::heading(0), "x", 0).markdownLine(), "# x");
    EXPECT_EQ(Block(BlockKind::heading(-4), "x", 0).markdownLine(), "# x");
}

TEST(Block, holdsItsLooseText)
{
    const Block block = paragraph(" **Some**\tText ");
    EXPECT_EQ(block.normalizedHash, "some text");
    EXPECT_EQ(block.text, " **Some**\tText ");
}

TEST(Block, theKeyFollowsTheOptions)
{
    const Block block = paragraph("*Some*  Text");
    EXPECT_EQ(block.comparisonKey({}), "Some Text");
    EXPECT_EQ(block.comparisonKey({.ignoreWhitespace = false}), "Some  Text");
    EXPECT_EQ(block.comparisonKey({.ignoreCase = true}), "some text");
    EXPECT_EQ(block.comparisonKey({.ignoreFormattingMarkers = false}), "*Some* Text");
}

TEST(ComparisonOptions, haveTheirDefaults)
{
    const ComparisonOptions options;
    EXPECT_TRUE(options.ignoreWhitespace);
    EXPECT_FALSE(options.ignoreCase);
    EXPECT_TRUE(options.ignoreFormattingMarkers);
    EXPECT_EQ(options.maxTokens, 200'000U);
}

TEST(RunKind, hasAWordForEachCase)
{
    EXPECT_THAT(RunKinds::allCases, ElementsAre(RunKind::same, RunKind::inserted, RunKind::deleted));
    EXPECT_EQ(rawValue(RunKind::same), "same");
    EXPECT_EQ(rawValue(RunKind::inserted), "inserted");
    EXPECT_EQ(rawValue(RunKind::deleted), "deleted");
}

TEST(Change, isKnownByItsBlocks)
{
    const Change insertion = Change::inserted(paragraph("new", 7));
    const Change deletion = Change::deleted(paragraph("old", 3));
    const Change modification = Change::modified(paragraph("old", 3), paragraph("new", 7), {});
    EXPECT_EQ(insertion.id(), "i7");
    EXPECT_EQ(deletion.id(), "d3");
    EXPECT_EQ(modification.id(), "m3-7");
    EXPECT_EQ(insertion.oldBlock(), nullptr);
    EXPECT_EQ(insertion.newBlock()->text, "new");
    EXPECT_EQ(deletion.oldBlock()->text, "old");
    EXPECT_EQ(deletion.newBlock(), nullptr);
    EXPECT_EQ(modification.oldBlock()->text, "old");
    EXPECT_EQ(modification.newBlock()->text, "new");
    EXPECT_EQ(insertion.searchableText(), "new");
    EXPECT_EQ(deletion.searchableText(), "old");
    EXPECT_EQ(modification.searchableText(), "old new");
}

TEST(Change, countsItsWords)
{
    const Change insertion = Change::inserted(paragraph("a b, c"));
    EXPECT_EQ(insertion.wordsAdded(), 3U);
    EXPECT_EQ(insertion.wordsRemoved(), 0U);
    const Change deletion = Change::deleted(paragraph("a b"));
    EXPECT_EQ(deletion.wordsAdded(), 0U);
    EXPECT_EQ(deletion.wordsRemoved(), 2U);
    const Change modification = Change::modified(paragraph("a b c"), paragraph("a x y c z"),
        {{RunKind::same, "a", 1}, {RunKind::deleted, "b", 1}, {RunKind::inserted, "x y", 2}, {RunKind::same, "c", 1},
            {RunKind::inserted, "z", 1}});
    EXPECT_EQ(modification.wordsAdded(), 3U);
    EXPECT_EQ(modification.wordsRemoved(), 1U);
}

TEST(Change, ofSameRunsOnlyAddsAndRemovesNothing)
{
    const Change change = Change::modified(paragraph("A"), paragraph("a"), {{RunKind::same, "A", 1}});
    EXPECT_EQ(change.wordsAdded(), 0U);
    EXPECT_EQ(change.wordsRemoved(), 0U);
}

TEST(Change, takesTheNewBlocksPageOrElseTheOldOnes)
{
    EXPECT_EQ(Change::modified(paragraph("a", 0, 4), paragraph("b"), {}).page(), 4);
    EXPECT_EQ(Change::modified(paragraph("a", 0, 4), paragraph("b", 0, 5), {}).page(), 5);
    EXPECT_EQ(Change::modified(paragraph("a"), paragraph("b"), {}).page(), std::nullopt);
    EXPECT_EQ(Change::inserted(paragraph("b", 0, 0)).page(), 0);
    EXPECT_EQ(Change::deleted(paragraph("b", 0, 2)).page(), 2);
}

TEST(ComparisonSection, isTitledByItsRightPageFirst)
{
    EXPECT_EQ(section(3, 2).title(), "Page 2");
    EXPECT_EQ(section(3, std::nullopt).title(), "Page 3");
    const ComparisonSection both = section(std::nullopt, 5, "Terms");
    EXPECT_EQ(both.title(), "Page 5");
    EXPECT_EQ(both.heading, "Terms");
}

TEST(ComparisonSection, withoutAPageIsTitledByItsHeading)
{
    EXPECT_EQ(section(std::nullopt, std::nullopt, "Terms").title(), "Terms");
    EXPECT_EQ(section(std::nullopt, std::nullopt, "").title(), "Document");
    EXPECT_EQ(section(std::nullopt, std::nullopt).title(), "Document");
}

TEST(ComparisonSection, saysPageInBothLanguages)
{
    for (const NolfaLanguage language : {NolfaLanguage::en, NolfaLanguage::fr}) {
        const LanguageScope scope(language);
        EXPECT_EQ(section(1, std::nullopt).title(), "Page 1");
        EXPECT_EQ(section(std::nullopt, std::nullopt).title(), "Document");
    }
}

TEST(ComparisonSection, sumsItsChanges)
{
    ComparisonSection two = section(1, 1);
    two.changes.push_back(Change::deleted(paragraph("three more words")));
    EXPECT_EQ(two.wordsAdded(), 2U);
    EXPECT_EQ(two.wordsRemoved(), 3U);
}

TEST(ComparisonSummary, countsChanges)
{
    EXPECT_TRUE((ComparisonSummary{.blocksUnchanged = 4}).isIdentical());
    const ComparisonSummary summary{.blocksAdded = 1, .blocksRemoved = 2, .blocksModified = 4, .blocksUnchanged = 8};
    EXPECT_EQ(summary.changeCount(), 7U);
    EXPECT_FALSE(summary.isIdentical());
}

TEST(ComparedFile, saysItsSizeAndDateInTheUsersWay)
{
    const LocaleScope locale({.language = "en", .region = "US"});
    const ComparedFile file{"/home/a/contract v2.docx", DocumentFormat::docx, 2'000'000,
        std::chrono::sys_days(std::chrono::year(2026) / 3 / 9) + std::chrono::hours(12), FidelityTier::excellent};
    EXPECT_EQ(file.name(), "contract v2.docx");
    EXPECT_EQ(file.sizeText(), "2 MB");
    EXPECT_EQ(file.modifiedText(), "March 9, 2026");
}

TEST(DocumentComparison, countsPagesOnce)
{
    const ComparedFile file{"a.md", DocumentFormat::markdown, 0, {}, FidelityTier::excellent};
    DocumentComparison comparison{file, file, {section(2, 2), section(2, std::nullopt)}, {.blocksAdded = 2}, {}, {}};
    EXPECT_EQ(comparison.pageCount(), 1U);
    comparison.sections = {section(std::nullopt, std::nullopt, "A"), section(std::nullopt, std::nullopt, "B")};
    EXPECT_EQ(comparison.pageCount(), 0U);
    EXPECT_EQ(comparison.changes().size(), 2U);
    EXPECT_EQ(comparison.changes().front(), &comparison.sections.front().changes.front());
    EXPECT_EQ(comparison.changeCount(), 2U);
    EXPECT_FALSE(comparison.isIdentical());
}
