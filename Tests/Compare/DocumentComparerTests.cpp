#include "Compare/DocumentComparer.h"

#include "Compare/ComparedText.h"
#include "Compare/ComparisonReport.h"
#include "Engine/ConversionError.h"
#include "Platform/File.h"
#include "Support/Expect.h"
#include "Support/PDFBuilder.h"
#include "Support/Scopes.h"
#include "Support/StubConverter.h"
#include "Support/TemporaryFolder.h"

#include <atomic>
#include <gmock/gmock.h>
#include <random>
#include <thread>

using namespace nolfa;
using namespace nolfa::testing;
namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

namespace {

const std::vector<ConversionPair> docxToMarkdown{{DocumentFormat::docx, DocumentFormat::markdown}};

/// Word files that hold Markdown.
ConversionService service()
{
    return ConversionService({std::make_shared<StubConverter>(
        docxToMarkdown, [](const fs::path &input, const fs::path &output, ConversionPair, const std::stop_token &) {
            fs::copy_file(input, output);
        })});
}

class DocumentComparerTest : public ::testing::Test {
protected:
    DocumentComparison compare(const fs::path &left, const fs::path &right) const
    {
        return DocumentComparer::compare(left, right, service());
    }

    DocumentComparison compareTexts(std::string_view left, std::string_view right) const
    {
        return compare(folder.write("left.md", left), folder.write("right.md", right));
    }

    TemporaryFolder folder;
    TemporaryFolder scratch;
    EnvironmentScope temporary{"TMPDIR", scratch.path()};
};

std::vector<std::string> titles(const DocumentComparison &comparison)
{
    std::vector<std::string> all;
    for (const ComparisonSection &section : comparison.sections)
        all.push_back(section.title());
    return all;
}

} // namespace

TEST_F(DocumentComparerTest, aDocumentIsIdenticalToItself)
{
    const fs::path file = folder.write("a.md", "# Title\n\nSome text.\n\nSome text.\n\n- item\n");
    const DocumentComparison comparison = compare(file, file);
    EXPECT_THAT(comparison.sections, IsEmpty());
    EXPECT_TRUE(comparison.isIdentical());
    EXPECT_EQ(comparison.summary, (ComparisonSummary{.blocksUnchanged = 4, .similarity = 1.0}));
}

TEST_F(DocumentComparerTest, twoEmptyDocumentsAreAlike)
{
    const DocumentComparison comparison = compareTexts("", "\n\n");
    EXPECT_EQ(comparison.summary, ComparisonSummary{});
    EXPECT_EQ(comparison.summary.similarity, 1.0);
}

TEST_F(DocumentComparerTest, anEmptyDocumentAndAFullOneShareNothing)
{
    const DocumentComparison comparison = compareTexts("", "# A\n\none two\n");
    EXPECT_EQ(comparison.summary, (ComparisonSummary{.blocksAdded = 2, .wordsAdded = 3, .similarity = 0.0}));
    for (const Change *change : comparison.changes())
        EXPECT_NE(change->as<Change::Inserted>(), nullptr);
}

TEST_F(DocumentComparerTest, countsWhatChanged)
{
    const DocumentComparison comparison
        = compareTexts("# T\n\none two three\n\ngone\n\nstays\n", "# T\n\none two four\n\nstays\n\nnew words\n");
    EXPECT_EQ(comparison.summary,
        (ComparisonSummary{.blocksAdded = 1,
            .blocksRemoved = 1,
            .blocksModified = 1,
            .blocksUnchanged = 2,
            .wordsAdded = 3,
            .wordsRemoved = 2,
            .similarity = 1.0 - 5.0 / 13.0}));
    EXPECT_EQ(comparison.changeCount(), 3U);
}

TEST_F(DocumentComparerTest, describesBothFiles)
{
    const fs::path left = folder.write("old.docx", "# A\n\nb");
    const fs::path right = folder.write("new.md", "# A\n\nb");
    const auto before = std::chrono::system_clock::now();
    const DocumentComparison comparison
        = DocumentComparer::compare(left, right, service(), {.ignoreCase = true, .maxTokens = 7});
    EXPECT_TRUE(comparison.isIdentical());
    EXPECT_EQ(comparison.left.url, left);
    EXPECT_EQ(comparison.left.format, DocumentFormat::docx);
    EXPECT_EQ(comparison.left.byteSize, 6);
    EXPECT_EQ(comparison.left.normalizationTier, FidelityTier::excellent);
    EXPECT_EQ(comparison.right.format, DocumentFormat::markdown);
    EXPECT_EQ(comparison.right.normalizationTier, FidelityTier::excellent);
    EXPECT_LT(std::chrono::abs(comparison.left.modifiedAt - before), std::chrono::minutes(1));
    EXPECT_GE(comparison.generatedAt, before);
    EXPECT_EQ(comparison.options, (ComparisonOptions{.ignoreCase = true, .maxTokens = 7}));
}

TEST_F(DocumentComparerTest, theTierIsThatOfTheWayToMarkdown)
{
    const fs::path pdf = PDFBuilder().textPage({"Some words on a page of text."}).write(folder / "a.pdf");
    EXPECT_EQ(compare(pdf, pdf).left.normalizationTier,
        Fidelity::capability(DocumentFormat::pdf, DocumentFormat::markdown)->tier);
}

TEST_F(DocumentComparerTest, aPDFHasPages)
{
    const std::string common = "These words stand on both of them, nothing changed here at all.";
    const auto write = [&](const char *name, const std::string &first, const std::string &second) {
        return PDFBuilder().textPage({common, first}).textPage({common + " Again.", second}).write(folder / name);
    };
    const fs::path left = write("a.pdf", "Here is a line of the first page.", "And here one of the second page.");
    const fs::path right = write("b.pdf", "Here is a line of the first leaf.", "And here one of the second leaf.");
    const DocumentComparison comparison = compare(left, right);
    EXPECT_THAT(titles(comparison), ElementsAre("Page 1", "Page 2"));
    EXPECT_EQ(comparison.pageCount(), 2U);
    EXPECT_EQ(comparison.sections.front().leftPage, 1);
    EXPECT_EQ(comparison.summary.wordsAdded, 2U);

    // Against a document without pages, what pages there are serve.
    const fs::path text = folder.write("c.md", common + " Here is a line of the first leaf.\n\nNothing else remains.");
    const DocumentComparison mixed = compare(left, text);
    EXPECT_THAT(titles(mixed), ElementsAre("Page 1", "Page 2", "Document"));
    EXPECT_EQ(mixed.sections.front().rightPage, std::nullopt);
    EXPECT_THAT(folder.names(), ElementsAre("a.pdf", "b.pdf", "c.md")) << "nothing is left beside the documents";
}

TEST_F(DocumentComparerTest, anUnknownFormatIsRefused)
{
    const fs::path known = folder.write("a.md", "a");
    const fs::path unknown = folder.write("b.xyz", "b");
    expectError(ConversionError::unreadableInput(unknown), [&] { static_cast<void>(compare(known, unknown)); });
    expectError(ConversionError::unreadableInput(unknown), [&] { static_cast<void>(compare(unknown, known)); });
    EXPECT_THAT(scratch.names(), IsEmpty());
}

TEST_F(DocumentComparerTest, failuresPassUnchanged)
{
    const fs::path known = folder.write("a.md", "a");
    expectError(ConversionError::unreadableInput(folder / "none.md"),
        [&] { static_cast<void>(compare(folder / "none.md", known)); });
    const ConversionService failing({std::make_shared<StubConverter>(
        docxToMarkdown, [](const fs::path &input, const fs::path &, ConversionPair, const std::stop_token &) {
            throw ConversionError::passwordProtected(input);
        })});
    const fs::path locked = folder.write("b.docx", "b");
    expectError(ConversionError::passwordProtected(locked),
        [&] { static_cast<void>(DocumentComparer::compare(known, locked, failing)); });
    EXPECT_THAT(scratch.names(), IsEmpty());
}

TEST_F(DocumentComparerTest, theLeftDocumentIsLoadedFirst)
{
    expectError(
        ConversionError::unreadableInput("left.md"), [&] { static_cast<void>(compare("left.md", "right.md")); });
}

TEST_F(DocumentComparerTest, picturesThatTheConversionExtractsDontDifferByTheirPlace)
{
    const ConversionService extracting({std::make_shared<StubConverter>(
        docxToMarkdown, [](const fs::path &, const fs::path &output, ConversionPair, const std::stop_token &) {
            const fs::path media = output.parent_path() / (output.stem().string() + "-media");
            File::write(output, "![a](" + media.string() + "/media/image1.png)\n\n![b](media/b.png)");
        })});
    const fs::path left = folder.write("a.docx", "x");
    fs::create_directory(folder / "other");
    const fs::path right = folder.write("other/b.docx", "x");
    EXPECT_TRUE(DocumentComparer::compare(left, right, extracting).isIdentical());
    EXPECT_TRUE(DocumentComparer::compare(left, left, extracting).isIdentical());
    const DocumentComparison comparison
        = DocumentComparer::compare(left, folder.write("c.md", "![b](media/b.png)"), extracting);
    EXPECT_EQ(comparison.changes().front()->oldBlock()->text, "![a](media/image1.png)");
}

TEST_F(DocumentComparerTest, aFolderIsSizedAsItsFiles)
{
    folder.write("book.pages/a/one", "123");
    folder.write("book.pages/two", "4567");
    EXPECT_EQ(ComparedText::byteSize(folder / "book.pages"), 7);
    EXPECT_EQ(ComparedText::byteSize(folder / "book.pages/two"), 4);
    EXPECT_EQ(ComparedText::byteSize(folder / "none"), 0);
    EXPECT_LT(std::chrono::abs(ComparedText::modificationDate(folder / "none") - std::chrono::system_clock::now()),
        std::chrono::minutes(1));
}

TEST_F(DocumentComparerTest, aStopBeforeTheStartIsACancellation)
{
    std::stop_source source;
    source.request_stop();
    const fs::path file = folder.write("a.md", "a");
    expectError(ConversionError::cancelled(),
        [&] { static_cast<void>(DocumentComparer::compare(file, file, service(), {}, source.get_token())); });
    EXPECT_THAT(scratch.names(), IsEmpty());
}

TEST_F(DocumentComparerTest, aStopBetweenTheDocumentsIsACancellation)
{
    std::stop_source source;
    const ConversionService stopping({std::make_shared<StubConverter>(
        docxToMarkdown, [&source](const fs::path &, const fs::path &output, ConversionPair, const std::stop_token &) {
            File::write(output, "a");
            source.request_stop();
        })});
    const fs::path left = folder.write("a.docx", "a");
    expectError(ConversionError::cancelled(), [&] {
        static_cast<void>(DocumentComparer::compare(left, folder / "none.md", stopping, {}, source.get_token()));
    });
    EXPECT_THAT(scratch.names(), IsEmpty());
}

TEST_F(DocumentComparerTest, aStopInTheMiddleOfADiffReturnsAtOnce)
{
    // The same blocks in reverse, each standing twice: no anchors, and a search to the very ceiling.
    std::string left;
    std::string right;
    for (int i = 0; i < 40'000; ++i) {
        left += "block " + std::to_string(i / 2) + "\n\n";
        right += "block " + std::to_string(20'000 - i / 2) + "\n\n";
    }
    const fs::path before = folder.write("a.md", left);
    const fs::path after = folder.write("b.md", right);
    auto best = std::chrono::steady_clock::duration::max();
    for (int round = 0; round < 3; ++round) {
        std::stop_source source;
        std::atomic<std::chrono::steady_clock::time_point> asked{};
        std::jthread stopper([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(150));
            asked = std::chrono::steady_clock::now();
            source.request_stop();
        });
        expectError(ConversionError::cancelled(),
            [&] { static_cast<void>(DocumentComparer::compare(before, after, service(), {}, source.get_token())); });
        best = std::min(best, std::chrono::steady_clock::now() - asked.load());
    }
    EXPECT_LT(best, std::chrono::milliseconds(100));
    EXPECT_THAT(scratch.names(), IsEmpty());
}

TEST_F(DocumentComparerTest, aReportIsIdenticalForAnyDocumentAgainstItself)
{
    std::mt19937 random(6);
    constexpr std::string_view pieces = "ab *_#->|`~1.\n\n\xC3\xA9\xFF\0\r";
    for (int round = 0; round < 300; ++round) {
        std::string text;
        for (std::size_t i = random() % 200; i > 0; --i)
            text += pieces[random() % pieces.size()];
        const fs::path file = folder.write("a.md", text);
        const DocumentComparison comparison = compare(file, file);
        ASSERT_TRUE(comparison.isIdentical()) << ::testing::PrintToString(text);
        ASSERT_EQ(comparison.summary.similarity, 1.0);
        ASSERT_THAT(ComparisonReport::markdown(comparison), HasSubstr(ComparisonReport::identicalMessage()));
    }
}
