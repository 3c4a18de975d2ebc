#include "Nolfa/Features/Expectations/ExpectationsModel.h"

#include "Support/Scopes.h"

#include <QVariant>
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace nolfa;
using namespace nolfa::testing;

namespace {

/// What the table shows of a row.
struct Shown {
    std::string name;
    std::string chips;
    std::string toMarkdown;
    std::string fromMarkdown;

    bool operator==(const Shown &) const = default;
    friend void PrintTo(const Shown &row, std::ostream *out)
    {
        *out << row.name << " [" << row.chips << "] " << row.toMarkdown << " / " << row.fromMarkdown;
    }
};

std::vector<Shown> shownBy(const ExpectationsModel &model)
{
    std::vector<Shown> rows;
    for (const QVariant &entry : model.property("rows").toList()) {
        const QVariantMap map = entry.toMap();
        const auto text = [&map](const char *key) { return map.value(key).toString().toStdString(); };
        std::string chips = map.value("isMacOnly").toBool() ? "MAC" : "";
        chips += map.value("requiresNetwork").toBool() ? "INTERNET" : "";
        rows.push_back({text("name"), chips, text("toMarkdown"), text("fromMarkdown")});
    }
    return rows;
}

const std::vector<Shown> table{{"Word", "", "excellent", "excellent"}, {"PDF", "", "good", "excellent"},
    {"PowerPoint", "", "good", "excellent"}, {"Excel", "", "good", "good"}, {"Pages", "MAC", "good", "good"},
    {"Keynote", "MAC", "good", "good"}, {"Numbers", "MAC", "good", "good"}, {"Google Doc", "INTERNET", "good", ""},
    {"Google Sheet", "INTERNET", "good", ""}, {"Google Slides", "INTERNET", "good", ""},
    {"Image", "", "bestEffort", ""}};

const std::string directLine
    = "Word ⇄ PDF · Excel ⇄ PDF · PDF → PowerPoint · Word ⇄ PowerPoint · Word ⇄ Excel · Word ⇄ Pages · Excel ⇄ Numbers "
      "· PowerPoint ⇄ Keynote · Pages → PDF · Numbers → PDF · Keynote → PDF · Google Doc → Word · Google Sheet → Excel "
      "· Google Slides → PowerPoint · Image → PDF · Image → Word · Google Doc → PDF · Google Sheet → PDF · Google "
      "Slides → PDF";

} // namespace

TEST(ExpectationsModel, formatsAreAllButMarkdownInOrder)
{
    const ExpectationsModel model;
    std::vector<DocumentFormat> formats(DocumentFormats::allCases.begin() + 1, DocumentFormats::allCases.end());
    EXPECT_EQ(model.formats(), formats);
}

TEST(ExpectationsModel, theTableIsThatOfTheEngine)
{
    const LanguageScope english(NolfaLanguage::en);
    const ExpectationsModel model;
    EXPECT_EQ(shownBy(model), table);
    for (const Expectation &row : model.rows()) {
        EXPECT_EQ(row.toMarkdown, Fidelity::capability(row.format, DocumentFormat::markdown));
        EXPECT_EQ(row.fromMarkdown, Fidelity::capability(DocumentFormat::markdown, row.format));
    }
}

TEST(ExpectationsModel, theRowOfAGoogleFormatHasNothingUnderFromMarkdown)
{
    for (const Expectation &row : ExpectationsModel().rows()) {
        if (isGoogle(row.format)) {
            EXPECT_EQ(row.fromMarkdown, std::nullopt) << displayName(row.format);
        }
    }
}

TEST(ExpectationsModel, aChipIsTakenFromEitherWayOfTheRow)
{
    constexpr ConversionCapability plain{FidelityTier::good, std::nullopt};
    const ConversionCapability mac{.tier = FidelityTier::good, .note = std::nullopt, .isMacOnly = true};
    const ConversionCapability net{.tier = FidelityTier::good, .note = std::nullopt, .requiresNetwork = true};
    EXPECT_TRUE((Expectation{DocumentFormat::key, mac, plain}).isMacOnly());
    EXPECT_TRUE((Expectation{DocumentFormat::key, plain, mac}).isMacOnly());
    EXPECT_TRUE((Expectation{DocumentFormat::key, std::nullopt, net}).requiresNetwork());
    EXPECT_TRUE((Expectation{DocumentFormat::key, net, std::nullopt}).requiresNetwork());
    EXPECT_FALSE((Expectation{DocumentFormat::key, plain, std::nullopt}).isMacOnly());
    EXPECT_FALSE((Expectation{DocumentFormat::key, mac, mac}).requiresNetwork());
}

TEST(ExpectationsModel, aPairBothWaysAppearsOnceWithBothArrows)
{
    const std::string line = ExpectationsModel::directConversions();
    EXPECT_THAT(line, ::testing::HasSubstr("Word ⇄ PDF"));
    EXPECT_THAT(line, ::testing::Not(::testing::HasSubstr("PDF ⇄ Word")));
    EXPECT_THAT(line, ::testing::Not(::testing::HasSubstr("PDF → Word")));
    EXPECT_EQ(line, directLine);
}

TEST(ExpectationsModel, aChangeOfLanguageRebuildsTheSheetWithTheSameTable)
{
    const LanguageScope english(NolfaLanguage::en);
    ExpectationsModel model;
    int told = 0;
    QObject::connect(&model, &ExpectationsModel::textsChanged, [&told] { ++told; });
    NolfaL10n::setCurrent(NolfaLanguage::fr);
    model.refresh();
    EXPECT_EQ(told, 1);
    EXPECT_EQ(shownBy(model), table);
    EXPECT_EQ(model.property("directConversions").toString().toStdString(), directLine);
}

TEST(ExpectationsModel, whoListensHearsTheWholeRow)
{
    const std::vector<Expectation> rows = ExpectationsModel().rows();
    const auto summary
        = [&rows](DocumentFormat format) { return std::ranges::find(rows, format, &Expectation::format)->summary(); };
    const LanguageScope english(NolfaLanguage::en);
    EXPECT_EQ(summary(DocumentFormat::docx), "Word, → Markdown EXCELLENT, Markdown → EXCELLENT");
    EXPECT_EQ(summary(DocumentFormat::pages), "Pages, Needs a Mac app, → Markdown GOOD, Markdown → GOOD");
    EXPECT_EQ(summary(DocumentFormat::gdoc), "Google Doc, Needs the internet, → Markdown GOOD, Markdown → –");
    NolfaL10n::setCurrent(NolfaLanguage::fr);
    EXPECT_EQ(summary(DocumentFormat::pages), "Pages, Nécessite une application Mac, → Markdown BON, Markdown → BON");
    EXPECT_EQ(summary(DocumentFormat::gdoc), "Google Doc, Nécessite une connexion, → Markdown BON, Markdown → –");
    EXPECT_EQ(summary(DocumentFormat::image), "Image, → Markdown AU MIEUX, Markdown → –");
}
