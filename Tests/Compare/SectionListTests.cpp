#include "Compare/SectionList.h"

#include "Compare/MarkdownBlockParser.h"

#include <gmock/gmock.h>

using namespace nolfa;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

const std::string noHeading = "(none)";

std::string headingAt(const BlockHeadings &headings, std::size_t index)
{
    const std::string *heading = headings.at(index);
    return heading != nullptr ? *heading : noHeading;
}

/// The changes that inserting the right document's blocks, or deleting the left one's, makes.
std::vector<Change> insertions(const std::vector<Block> &blocks)
{
    std::vector<Change> changes;
    for (const Block &block : blocks)
        changes.push_back(Change::inserted(block));
    return changes;
}

std::vector<ComparisonSection> sectionsOf(std::string_view right)
{
    const std::vector<Block> blocks = MarkdownBlockParser::parse(right);
    return SectionList::sectionize(insertions(blocks), BlockHeadings({}), BlockHeadings(blocks));
}

} // namespace

TEST(BlockHeadings, aBlockStandsUnderTheLastHeading)
{
    const std::vector<Block> blocks = MarkdownBlockParser::parse("a\n# One\nb\n\nc\n## Two\nd");
    const BlockHeadings headings(blocks);
    EXPECT_EQ(headingAt(headings, 0), noHeading);
    EXPECT_EQ(headingAt(headings, 1), "One") << "the heading itself included";
    EXPECT_EQ(headingAt(headings, 3), "One");
    EXPECT_EQ(headingAt(headings, 4), "Two");
    EXPECT_EQ(headingAt(headings, 5), "Two");
}

TEST(SectionList, withoutChangesThereAreNoSections)
{
    EXPECT_THAT(SectionList::sectionize({}, BlockHeadings({}), BlockHeadings({})), IsEmpty());
}

TEST(SectionList, changesBeforeTheFirstHeadingShareASectionWithoutOne)
{
    const std::vector<ComparisonSection> sections = sectionsOf("a\n\nb");
    ASSERT_THAT(sections, SizeIs(1));
    EXPECT_EQ(sections[0].heading, std::nullopt);
    EXPECT_EQ(sections[0].title(), "Document");
    EXPECT_THAT(sections[0].changes, SizeIs(2));
}

TEST(SectionList, aSectionBeginsAtEachChangeOfPageOrHeading)
{
    const std::vector<ComparisonSection> sections
        = sectionsOf("<!-- nolfa:page 1 -->\n# A\nx\n<!-- nolfa:page 2 -->\ny\n# B\nz\n# A\nw");
    std::vector<std::string> titles;
    for (const ComparisonSection &section : sections) {
        EXPECT_EQ(section.id, titles.size());
        titles.push_back(section.title() + " " + section.heading.value_or(noHeading));
    }
    EXPECT_THAT(titles, ElementsAre("Page 1 A", "Page 2 A", "Page 2 B", "Page 2 A")) << "never merged backwards";
}

TEST(SectionList, twoHeadingsOfOneTextAreOneSection)
{
    EXPECT_THAT(sectionsOf("# A\nx\n# A\ny"), SizeIs(1));
}

TEST(SectionList, aDeletedBlockTakesTheLeftDocumentsHeading)
{
    const std::vector<Block> left = MarkdownBlockParser::parse("# Gone\na");
    const std::vector<Block> right = MarkdownBlockParser::parse("# Here\nb");
    const std::vector<ComparisonSection> sections = SectionList::sectionize(
        {Change::deleted(left[1]), Change::inserted(right[1])}, BlockHeadings(left), BlockHeadings(right));
    ASSERT_THAT(sections, SizeIs(2));
    EXPECT_EQ(sections[0].heading, "Gone");
    EXPECT_EQ(sections[1].heading, "Here");
}

TEST(SectionList, aModifiedBlockTakesTheRightDocumentsHeadingEvenIfThereIsNone)
{
    const std::vector<Block> left = MarkdownBlockParser::parse("# Gone\na");
    const std::vector<Block> right = MarkdownBlockParser::parse("b");
    const std::vector<ComparisonSection> sections
        = SectionList::sectionize({Change::modified(left[1], right[0], {})}, BlockHeadings(left), BlockHeadings(right));
    ASSERT_THAT(sections, SizeIs(1));
    EXPECT_EQ(sections[0].heading, std::nullopt);
}

TEST(SectionList, pagesAreTheFirstKnownOnEachSide)
{
    const auto block = [](std::size_t index, std::optional<std::int64_t> page) {
        return Block(BlockKind::paragraph(), "x", index, page);
    };
    const std::vector<ComparisonSection> sections = SectionList::sectionize(
        {Change::inserted(block(0, 2)), Change::deleted(block(0, 2)), Change::modified(block(1, 9), block(1, 2), {}),
            Change::modified(block(2, 3), block(2, std::nullopt), {})},
        BlockHeadings({}), BlockHeadings({}));
    ASSERT_THAT(sections, SizeIs(2));
    EXPECT_EQ(sections[0].leftPage, 2);
    EXPECT_EQ(sections[0].rightPage, 2);
    EXPECT_EQ(sections[1].leftPage, 3);
    EXPECT_EQ(sections[1].rightPage, std::nullopt);
    EXPECT_EQ(sections[1].title(), "Page 3");
}
