#include "Compare/ComparisonReport.h"

#include "Platform/CancellationError.h"
#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

using namespace nolfa;
using nolfa::testing::contentOf;
using nolfa::testing::LanguageScope;
using nolfa::testing::LocaleScope;
using nolfa::testing::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

std::chrono::system_clock::time_point day(unsigned number)
{
    return std::chrono::sys_days(std::chrono::year(2026) / 3 / number) + std::chrono::hours(12);
}

Block block(BlockKind kind, std::string text, std::optional<std::int64_t> page = std::nullopt)
{
    return {kind, std::move(text), 0, page};
}

DocumentComparison comparisonOf(std::vector<ComparisonSection> sections, ComparisonSummary summary)
{
    return {{"/a/contract v1.docx", DocumentFormat::docx, 20'000, day(1), FidelityTier::excellent},
        {"/b/contract v2.pdf", DocumentFormat::pdf, 3'000'000, day(2), FidelityTier::good}, std::move(sections),
        summary, day(3), {}};
}

ComparisonSection section(std::vector<Change> changes, std::optional<std::string> heading = std::nullopt,
    std::optional<std::int64_t> page = std::nullopt)
{
    return {.id = 0,
        .heading = std::move(heading),
        .leftPage = std::nullopt,
        .rightPage = page,
        .changes = std::move(changes)};
}

/// One of each change, under a page with a heading and under a heading alone.
DocumentComparison everything()
{
    return comparisonOf(
        {section({Change::inserted(block(BlockKind::heading(2), "New <title>", 4)),
                     Change::deleted(block(BlockKind::listItem(1), "old & gone"))},
             "Terms", 4),
            section({Change::modified(block(BlockKind::quote(), "a b c"), block(BlockKind::quote(), "a x c"),
                        {{RunKind::same, "a", 1}, {RunKind::deleted, "b", 1}, {RunKind::inserted, "x <", 1},
                            {RunKind::same, "c", 1}})},
                "Scope")},
        {.blocksAdded = 1,
            .blocksRemoved = 2,
            .blocksModified = 3,
            .blocksUnchanged = 4,
            .wordsAdded = 5,
            .wordsRemoved = 6,
            .similarity = 0.925});
}

class ComparisonReportTest : public ::testing::Test {
protected:
    LanguageScope language{NolfaLanguage::en};
    LocaleScope locale{{.language = "en", .region = "US"}};
};

} // namespace

TEST_F(ComparisonReportTest, formatsAreListedWithPDFFirst)
{
    EXPECT_THAT(ReportFormats::allCases, ElementsAre(ReportFormat::pdf, ReportFormat::markdown));
    EXPECT_EQ(rawValue(ReportFormat::pdf), "pdf");
    EXPECT_EQ(rawValue(ReportFormat::markdown), "markdown");
    EXPECT_EQ(title(ReportFormat::pdf), "PDF");
    EXPECT_EQ(title(ReportFormat::markdown), "Markdown");
    EXPECT_EQ(fileExtension(ReportFormat::pdf), "pdf");
    EXPECT_EQ(fileExtension(ReportFormat::markdown), "md");
}

TEST_F(ComparisonReportTest, isNamedAfterTheOriginal)
{
    const DocumentComparison comparison = everything();
    EXPECT_EQ(ComparisonReport::suggestedName(comparison, ReportFormat::pdf), "contract v1 (comparison).pdf");
    const LanguageScope french(NolfaLanguage::fr);
    EXPECT_EQ(ComparisonReport::suggestedName(comparison, ReportFormat::markdown), "contract v1 (comparaison).md");
}

TEST_F(ComparisonReportTest, hasEverythingInItsPlace)
{
    EXPECT_EQ(ComparisonReport::markdown(everything()), R"(# Comparison report

- Original: contract v1.docx · Word · 20 kB · March 1, 2026
- Revised: contract v2.pdf · PDF · 3 MB · March 2, 2026
- March 3, 2026

> In this report, `++added text++` is text the revised document adds, and `~~removed text~~` is text it removes. Everything else is unchanged.

## Summary

| Measure | Value |
|---|---|
| Added | 1 |
| Removed | 2 |
| Modified | 3 |
| Unchanged | 4 |
| Words added | 5 |
| Words removed | 6 |
| Similarity | 93% |

## Page 4

*Terms*

++## New <title>++

~~  - old & gone~~

## Scope

a ~~b~~ ++x <++ c

---

Nolfa 0.2.2 · nolfa.pelgo.app
)");
}

TEST_F(ComparisonReportTest, hasEverythingInFrench)
{
    const LanguageScope french(NolfaLanguage::fr);
    const LocaleScope frenchLocale({.language = "fr", .region = "FR"});
    const std::string report = ComparisonReport::markdown(everything());
    EXPECT_THAT(report, HasSubstr("# Rapport de comparaison\n\n- Original\u00A0: contract v1.docx · Word · "));
    EXPECT_THAT(report, HasSubstr("\n- Révisé\u00A0: contract v2.pdf · PDF · "));
    EXPECT_THAT(report, HasSubstr("\n- 3 mars 2026\n"));
    EXPECT_THAT(report, HasSubstr(R"(
> Dans ce rapport, `++texte ajouté++` correspond au texte ajouté par la version révisée, et `~~texte supprimé~~` au texte qu’elle retire. Le reste est inchangé.

## Résumé

| Mesure | Valeur |
|---|---|
| Ajouts | 1 |
| Suppressions | 2 |
| Modifications | 3 |
| Inchangés | 4 |
| Mots ajoutés | 5 |
| Mots supprimés | 6 |
| Similarité | 93% |
)"));
}

TEST_F(ComparisonReportTest, ofEqualDocumentsSaysSoAndHasNoSection)
{
    const std::string report = ComparisonReport::markdown(comparisonOf({}, {.blocksUnchanged = 9}));
    EXPECT_THAT(report,
        HasSubstr(
            "| Similarity | 100% |\n\nThe two documents match. There is no difference in the text.\n\n---\n\nNolfa"));
    const std::string html = ComparisonReport::html(comparisonOf({}, {.blocksUnchanged = 9}));
    EXPECT_THAT(html, HasSubstr("</table><p>The two documents match. There is no difference in the text.</p><hr>"));
    EXPECT_THAT(html, Not(HasSubstr("<h2>")));
    const LanguageScope french(NolfaLanguage::fr);
    EXPECT_EQ(
        ComparisonReport::identicalMessage(), "Les deux documents sont identiques. Aucune différence dans le texte.");
}

TEST_F(ComparisonReportTest, printsAHeadingOnce)
{
    const auto report = [](std::optional<std::string> heading, std::optional<std::int64_t> page) {
        return ComparisonReport::markdown(
            comparisonOf({section({Change::inserted(block(BlockKind::paragraph(), "x"))}, std::move(heading), page)},
                {.blocksAdded = 1}));
    };
    EXPECT_THAT(report("Terms", std::nullopt), HasSubstr("\n## Terms\n\n++x++\n"));
    EXPECT_THAT(report("Terms", 2), HasSubstr("\n## Page 2\n\n*Terms*\n\n++x++\n"));
    EXPECT_THAT(report("Page 2", 2), HasSubstr("\n## Page 2\n\n++x++\n"));
    EXPECT_THAT(report("", std::nullopt), HasSubstr("\n## Document\n\n++x++\n"));
}

TEST_F(ComparisonReportTest, roundsHalvesUp)
{
    const auto row = [](double similarity) {
        const std::string report = ComparisonReport::markdown(comparisonOf({}, {.similarity = similarity}));
        const std::size_t start = report.find("| Similarity | ") + 15;
        return report.substr(start, report.find(' ', start) - start);
    };
    EXPECT_EQ(row(0.995), "100%");
    EXPECT_EQ(row(0.925), "93%");
    EXPECT_EQ(row(0.004), "0%");
    EXPECT_EQ(row(1), "100%");
    EXPECT_EQ(row(0), "0%");
}

TEST_F(ComparisonReportTest, aModifiedBlockWithoutRunsIsAnEmptyLine)
{
    const DocumentComparison comparison = comparisonOf(
        {section({Change::modified(block(BlockKind::paragraph(), "a"), block(BlockKind::paragraph(), "b"), {})})},
        {.blocksModified = 1});
    EXPECT_THAT(ComparisonReport::markdown(comparison), HasSubstr("## Document\n\n\n\n---\n"));
    EXPECT_THAT(ComparisonReport::html(comparison), HasSubstr("<h2>Document</h2><p></p><hr>"));
}

TEST_F(ComparisonReportTest, htmlEscapesTheDocumentsText)
{
    const std::string html = ComparisonReport::html(everything());
    EXPECT_TRUE(html.starts_with("<!DOCTYPE html><html><head><meta charset=\"utf-8\"><style>body { font-family: "
                                 "\"Hanken Grotesk\", -apple-system, sans-serif; font-size: 11pt; line-height: 1.5; "
                                 "color: #1A1714; }\n"));
    EXPECT_THAT(html,
        HasSubstr("</style></head><body><h1>Comparison report</h1><p class=\"meta\">Original: contract "
                  "v1.docx · Word · 20 kB · March 1, 2026<br>Revised: contract v2.pdf · PDF · 3 MB · "
                  "March 2, 2026<br>March 3, 2026</p><p class=\"eyebrow\">SUMMARY</p><table><tr><th>Added"
                  "</th><td>1</td></tr>"));
    EXPECT_THAT(html,
        HasSubstr("<tr><th>Similarity</th><td>93%</td></tr></table><h2>Page 4</h2><p class=\"meta\">"
                  "Terms</p><p><ins>## New &lt;title&gt;</ins></p><p><del>  - old &amp; gone</del></p>"
                  "<h2>Scope</h2><p>a <del>b</del> <ins>x &lt;</ins> c</p><hr><p class=\"footer\">Nolfa "
                  "0.2.2 · nolfa.pelgo.app</p></body></html>"));
}

TEST_F(ComparisonReportTest, htmlSpeaksFrench)
{
    const LanguageScope french(NolfaLanguage::fr);
    const std::string html = ComparisonReport::html(everything());
    EXPECT_THAT(html, HasSubstr("<h1>Rapport de comparaison</h1><p class=\"meta\">Original\u00A0: "));
    EXPECT_THAT(html, HasSubstr("<p class=\"eyebrow\">RÉSUMÉ</p><table><tr><th>Ajouts</th>"));
}

TEST_F(ComparisonReportTest, isWrittenAsUTF8AndReplacesWhatWasThere)
{
    const TemporaryFolder folder;
    const std::filesystem::path file = folder.write("report.md", "before");
    ComparisonReport::write(everything(), file, ReportFormat::markdown);
    EXPECT_EQ(contentOf(file), ComparisonReport::markdown(everything()));
    EXPECT_THAT(folder.names(), ElementsAre("report.md"));
}

TEST_F(ComparisonReportTest, writeErrorsPassAsTheyAre)
{
    const TemporaryFolder folder;
    EXPECT_THROW(ComparisonReport::write(everything(), folder / "no/folder/report.md", ReportFormat::markdown),
        std::filesystem::filesystem_error);
}

TEST_F(ComparisonReportTest, aStopLeavesTheFileAsItWas)
{
    const TemporaryFolder folder;
    const std::filesystem::path file = folder.write("report.md", "before");
    std::stop_source source;
    source.request_stop();
    EXPECT_THROW(
        ComparisonReport::write(everything(), file, ReportFormat::markdown, source.get_token()), CancellationError);
    EXPECT_EQ(contentOf(file), "before");
    EXPECT_THAT(folder.names(), ElementsAre("report.md"));
}
