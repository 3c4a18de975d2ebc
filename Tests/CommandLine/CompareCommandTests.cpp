#include "CompareCommand.h"

#include "ComparisonJSON.h"
#include "Platform/JSON.h"
#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <sstream>

using namespace nolfa;
using namespace nolfa::CommandLine;
using namespace nolfa::testing;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace {

class CompareCommandTest : public ::testing::Test {
protected:
    std::string run(CompareArguments arguments, ExitStatus expected = ExitStatus::success)
    {
        if (arguments.original.empty()) {
            arguments.original = folder.write("a.md", "# T\n\none two three\n\ngone\n");
            arguments.revised = folder.write("b.md", "# T\n\none two four\n\n- came\n");
        }
        std::ostringstream out;
        ::testing::internal::CaptureStderr();
        EXPECT_EQ(runCompare(ConversionService({}), arguments, out, source.get_token()), expected);
        errors = ::testing::internal::GetCapturedStderr();
        return out.str();
    }

    LanguageScope language{NolfaLanguage::en};
    LocaleScope locale{{.language = "en", .region = "US"}};
    TemporaryFolder folder;
    std::stop_source source;
    std::string errors;
};

} // namespace

TEST_F(CompareCommandTest, printsTheReportAsMarkdown)
{
    const std::string report = run({});
    EXPECT_THAT(report, StartsWith("# Comparison report\n\n- Original: a.md · Markdown · "));
    EXPECT_THAT(report, HasSubstr("\n## T\n\none two ~~three~~ ++four++\n\n~~gone~~\n\n++- came++\n\n---\n"));
    EXPECT_EQ(errors, "");
}

TEST_F(CompareCommandTest, writesTheReportAndPrintsItsPath)
{
    const std::filesystem::path file = folder / "r.md";
    EXPECT_EQ(run({.report = ReportArguments{file, ReportFormat::markdown}}), file.string() + "\n");
    EXPECT_THAT(contentOf(file), StartsWith("# Comparison report\n"));
}

TEST_F(CompareCommandTest, overwritesNothing)
{
    folder.write("r.md", "before");
    EXPECT_EQ(
        run({.report = ReportArguments{folder / "r.md", ReportFormat::markdown}}), (folder / "r 2.md").string() + "\n");
    EXPECT_EQ(contentOf(folder / "r.md"), "before");
}

TEST_F(CompareCommandTest, aFailureNamesBothFiles)
{
    const std::filesystem::path file = folder.write("a.md", "a");
    EXPECT_EQ(run({.original = file, .revised = folder / "none.md"}, ExitStatus::documentFailed), "");
    EXPECT_EQ(errors,
        "a.md ↔ none.md: Nolfa couldn't read none.md. Check that the file is still there and is not damaged.\n");
}

TEST_F(CompareCommandTest, anInterruptionIsSaid)
{
    source.request_stop();
    EXPECT_EQ(run({}, ExitStatus::interrupted), "");
    EXPECT_EQ(errors, "Interrupted.\n");
}

TEST_F(CompareCommandTest, jsonHoldsTheWholeModel)
{
    const auto time = std::chrono::sys_days(std::chrono::year(2026) / 3 / 9) + std::chrono::milliseconds(1500);
    const DocumentComparison comparison{{"/x/a.docx", DocumentFormat::docx, 12, time, FidelityTier::excellent},
        {"/x/b.pdf", DocumentFormat::pdf, 34, time, FidelityTier::good},
        {{.id = 0,
            .heading = "T",
            .leftPage = std::nullopt,
            .rightPage = 2,
            .changes = {Change::inserted({BlockKind::heading(2), "New", 3, 2}),
                Change::deleted({BlockKind::listItem(1), "Old", 4}),
                Change::modified({BlockKind::code(), "*a*", 5}, {BlockKind::quote(), "a b", 6, 2},
                    {{RunKind::same, "*a*", 1}, {RunKind::inserted, "b", 1}})}}},
        {.blocksAdded = 1,
            .blocksRemoved = 1,
            .blocksModified = 1,
            .blocksUnchanged = 7,
            .wordsAdded = 2,
            .wordsRemoved = 1,
            .similarity = 0.5},
        time, {.ignoreCase = true, .maxTokens = 9}};
    EXPECT_EQ(JSON::parse(ComparisonJSON::text(comparison, "/x/r.md")), JSON::parse(R"({
  "version": 1,
  "left": { "path": "/x/a.docx", "name": "a.docx", "format": "docx", "byteSize": 12,
    "modifiedAt": "2026-03-09T00:00:01Z", "normalizationTier": "excellent" },
  "right": { "path": "/x/b.pdf", "name": "b.pdf", "format": "pdf", "byteSize": 34,
    "modifiedAt": "2026-03-09T00:00:01Z", "normalizationTier": "good" },
  "generatedAt": "2026-03-09T00:00:01Z",
  "options": { "ignoreWhitespace": true, "ignoreCase": true, "ignoreFormattingMarkers": true, "maxTokens": 9 },
  "summary": { "blocksAdded": 1, "blocksRemoved": 1, "blocksModified": 1, "blocksUnchanged": 7, "wordsAdded": 2,
    "wordsRemoved": 1, "similarity": 0.5 },
  "isIdentical": false, "changeCount": 3, "pageCount": 1,
  "sections": [ { "id": 0, "title": "Page 2", "heading": "T", "leftPage": null, "rightPage": 2, "wordsAdded": 2,
    "wordsRemoved": 1, "changes": [
      { "id": "i3", "kind": "inserted", "old": null,
        "new": { "kind": "heading", "level": 2, "index": 3, "page": 2, "text": "New", "normalizedHash": "new" } },
      { "id": "d4", "kind": "deleted",
        "old": { "kind": "listItem", "depth": 1, "index": 4, "page": null, "text": "Old", "normalizedHash": "old" },
        "new": null },
      { "id": "m5-6", "kind": "modified",
        "old": { "kind": "code", "index": 5, "page": null, "text": "*a*", "normalizedHash": "a" },
        "new": { "kind": "quote", "index": 6, "page": 2, "text": "a b", "normalizedHash": "a b" },
        "runs": [ { "kind": "same", "text": "*a*", "words": 1 }, { "kind": "inserted", "text": "b", "words": 1 } ] }
    ] } ],
  "report": "/x/r.md"
})"));
}

TEST_F(CompareCommandTest, jsonIsPrintedAloneAndNamesTheReport)
{
    const std::optional<JSON> json
        = JSON::parse(run({.report = ReportArguments{folder / "r.md", ReportFormat::markdown}, .asJSON = true}));
    ASSERT_TRUE(json);
    EXPECT_EQ(json->find("report")->string(), (folder / "r.md").string());
    EXPECT_EQ(json->find("changeCount")->value, JSON(3).value);
    EXPECT_THAT(folder.names(), ElementsAre("a.md", "b.md", "r.md"));
}
