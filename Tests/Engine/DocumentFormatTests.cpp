#include "Engine/DocumentFormat.h"

#include "Engine/ConversionPair.h"
#include "Support/Scopes.h"

#include <algorithm>
#include <gmock/gmock.h>

using namespace nolfa;
using namespace nolfa::testing;
using enum DocumentFormat;
using ::testing::ElementsAreArray;

namespace {

struct Row {
    DocumentFormat format;
    const char *rawValue;
    const char *displayName;
    const char *badgeName;
    const char *fileExtension;
    std::vector<std::string_view> matchingExtensions;
    FormatFamily family;
    bool isSourceOnly;
};

// clang-format off
const std::vector<Row> table {
    {markdown, "markdown", "Markdown", "MARKDOWN", "md", {"md", "markdown", "mdown"}, FormatFamily::hub, false},
    {docx, "docx", "Word", "WORD", "docx", {"docx"}, FormatFamily::office, false},
    {pdf, "pdf", "PDF", "PDF", "pdf", {"pdf"}, FormatFamily::hub, false},
    {pptx, "pptx", "PowerPoint", "POWERPOINT", "pptx", {"pptx"}, FormatFamily::office, false},
    {xlsx, "xlsx", "Excel", "EXCEL", "xlsx", {"xlsx"}, FormatFamily::office, false},
    {pages, "pages", "Pages", "PAGES", "pages", {"pages"}, FormatFamily::apple, false},
    {key, "key", "Keynote", "KEYNOTE", "key", {"key"}, FormatFamily::apple, false},
    {numbers, "numbers", "Numbers", "NUMBERS", "numbers", {"numbers"}, FormatFamily::apple, false},
    {gdoc, "gdoc", "Google Doc", "GOOGLE DOCS", "gdoc", {"gdoc"}, FormatFamily::google, true},
    {gsheet, "gsheet", "Google Sheet", "SHEETS", "gsheet", {"gsheet"}, FormatFamily::google, true},
    {gslides, "gslides", "Google Slides", "SLIDES", "gslides", {"gslides"}, FormatFamily::google, true},
    {image, "image", "Image", "IMAGE", "png", {"png", "jpg", "jpeg"}, FormatFamily::picture, true},
};
// clang-format on

} // namespace

TEST(DocumentFormat, everyFormatIsAsTheTableSays)
{
    ASSERT_EQ(table.size(), DocumentFormats::allCases.size());
    for (std::size_t index = 0; index < table.size(); ++index) {
        const Row &row = table[index];
        EXPECT_EQ(DocumentFormats::allCases.at(index), row.format);
        EXPECT_EQ(rawValue(row.format), row.rawValue);
        EXPECT_EQ(DocumentFormats::fromRawValue(row.rawValue), row.format);
        EXPECT_EQ(badgeName(row.format), row.badgeName);
        EXPECT_EQ(fileExtension(row.format), row.fileExtension);
        EXPECT_THAT(matchingExtensions(row.format), ElementsAreArray(row.matchingExtensions));
        EXPECT_EQ(family(row.format), row.family);
        EXPECT_EQ(isSourceOnly(row.format), row.isSourceOnly);
        for (const NolfaLanguage language : {NolfaLanguage::en, NolfaLanguage::fr}) {
            const LanguageScope scope(language);
            EXPECT_EQ(displayName(row.format), row.displayName);
        }
    }
}

TEST(DocumentFormat, kindsFollowTheFormat)
{
    for (const DocumentFormat format : DocumentFormats::allCases) {
        EXPECT_EQ(isMarkdown(format), format == markdown);
        EXPECT_EQ(isIWork(format), format == pages || format == key || format == numbers);
        EXPECT_EQ(isGoogle(format), format == gdoc || format == gsheet || format == gslides);
    }
}

TEST(DocumentFormat, extensionsMatchInAnyCaseAndExactly)
{
    EXPECT_EQ(DocumentFormats::fromURL("a.MD"), markdown);
    EXPECT_EQ(DocumentFormats::fromURL("a.Markdown"), markdown);
    EXPECT_EQ(DocumentFormats::fromURL("a.mdown"), markdown);
    EXPECT_EQ(DocumentFormats::fromURL("a.mkd"), std::nullopt);
    EXPECT_EQ(DocumentFormats::fromURL("a.jpeg"), image);
    EXPECT_EQ(DocumentFormats::fromURL("a.JPG"), image);
    EXPECT_EQ(DocumentFormats::fromURL("SLIDES.PPTX"), pptx);
    EXPECT_EQ(DocumentFormats::fromURL("photo.TIFF"), std::nullopt);
    EXPECT_EQ(DocumentFormats::fromURL("/a.docx/b"), std::nullopt);
    EXPECT_EQ(DocumentFormats::fromURL("a.docx.pdf"), pdf);
}

TEST(DocumentFormat, aNameWithoutExtensionHasNoFormat)
{
    for (const char *name : {"", "a", "a.", "docx", "/", "a.docx.", "a.docx "})
        EXPECT_EQ(DocumentFormats::fromURL(name), std::nullopt) << name;
}

TEST(DocumentFormat, aNameThatIsAllExtensionHasOne)
{
    EXPECT_EQ(DocumentFormats::fromURL("/a/.md"), markdown);
}

TEST(DocumentFormat, aSlashAtTheEndDoesNotCount)
{
    EXPECT_EQ(DocumentFormats::fromURL("/a/letter.pages/"), pages);
}

TEST(DocumentFormat, unknownRawValuesYieldNone)
{
    for (const char *text : {"", "Markdown", "md", "jpeg"})
        EXPECT_EQ(DocumentFormats::fromRawValue(text), std::nullopt) << text;
}

TEST(DocumentFormat, extensionsAreDisjoint)
{
    std::vector<std::string_view> all;
    for (const DocumentFormat format : DocumentFormats::allCases)
        std::ranges::copy(matchingExtensions(format), std::back_inserter(all));
    std::ranges::sort(all);
    EXPECT_EQ(std::ranges::adjacent_find(all), all.end());
}

TEST(FormatFamily, standsInOrder)
{
    using enum FormatFamily;
    EXPECT_THAT(FormatFamilies::allCases, ::testing::ElementsAre(hub, office, apple, google, picture));
}

TEST(ConversionPair, isEqualAndHashedByBothFields)
{
    const ConversionPair pair{docx, markdown};
    EXPECT_EQ(pair, (ConversionPair{docx, markdown}));
    EXPECT_NE(pair, (ConversionPair{markdown, docx}));
    EXPECT_NE(std::hash<ConversionPair>()(pair), std::hash<ConversionPair>()({markdown, docx}));
}
