#include "Arguments.h"

#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

using namespace nolfa;
using namespace nolfa::CommandLine;
using namespace nolfa::testing;
using ::testing::ElementsAre;

namespace {

ConvertArguments parseConvert(const std::vector<std::string> &words)
{
    return std::get<ConvertArguments>(parse(words).verb);
}

WatermarkArguments parseWatermark(std::vector<std::string> words)
{
    words.insert(words.begin(), {"watermark", "a.pdf", "--output", "b.pdf"});
    return std::get<WatermarkArguments>(parse(words).verb);
}

std::string usageError(const std::vector<std::string> &words, NolfaLanguage language = NolfaLanguage::en)
{
    const LanguageScope scope(language);
    try {
        (void)parse(words);
    } catch (const UsageError &error) {
        return error.what();
    }
    return "no error";
}

std::string printed(const std::vector<std::string> &words)
{
    return std::get<PrintArguments>(parse(words).verb).text;
}

} // namespace

TEST(Arguments, convertTakesInputsAndATarget)
{
    const ConvertArguments arguments = parseConvert({"convert", "a.docx", "b c.docx", "--to", "markdown"});
    EXPECT_THAT(arguments.inputs, ElementsAre("a.docx", "b c.docx"));
    EXPECT_EQ(arguments.target, DocumentFormat::markdown);
    EXPECT_EQ(arguments.outputDirectory, std::nullopt);
    EXPECT_GE(arguments.jobs, 2U);
}

TEST(Arguments, optionsMayStandAnywhereAndDashesEndThem)
{
    const TemporaryFolder folder;
    const ConvertArguments arguments
        = parseConvert({"convert", "--to=pptx", "a.md", "--into", folder.path(), "--jobs", "7", "--", "-b.md", "--to"});
    EXPECT_THAT(arguments.inputs, ElementsAre("a.md", "-b.md", "--to"));
    EXPECT_EQ(arguments.target, DocumentFormat::pptx);
    EXPECT_EQ(arguments.outputDirectory, folder.path());
    EXPECT_EQ(arguments.jobs, 7U);
}

TEST(Arguments, commonOptionsStandBeforeAndBehindTheVerb)
{
    for (const std::vector<std::string> &words :
        {std::vector<std::string>{"--quiet", "--paper", "a4", "formats", "--json"},
            std::vector<std::string>{"formats", "--json", "--quiet", "--paper", "a4"}}) {
        const Arguments arguments = parse(words);
        EXPECT_TRUE(arguments.isQuiet);
        EXPECT_EQ(arguments.paper, NolfaFormat::Paper::a4);
        EXPECT_TRUE(std::get<FormatsArguments>(arguments.verb).asJSON);
    }
}

TEST(Arguments, theLanguageIsFoundBeforeAnythingElse)
{
    EXPECT_EQ(languageIn({"convert", "--lang", "fr", "--bad"}), NolfaLanguage::fr);
    EXPECT_EQ(languageIn({"--lang=en"}), NolfaLanguage::en);
    EXPECT_EQ(languageIn({"--lang", "de"}), NolfaLanguage::system);
    EXPECT_EQ(languageIn({"convert", "--", "--lang", "fr"}), NolfaLanguage::system);
    EXPECT_EQ(languageIn({"--lang"}), NolfaLanguage::system);
}

TEST(Arguments, helpComesInBothLanguagesForEveryVerb)
{
    for (const std::vector<std::string> &words : {std::vector<std::string>{"--help"}, {"convert", "--help"},
             {"formats", "-h"}, {"watermark", "--help"}, {"convert", "--help", "a.docx"}}) {
        const LanguageScope english(NolfaLanguage::en);
        EXPECT_THAT(printed(words), ::testing::HasSubstr("Usage: nolfa-cli"));
        NolfaL10n::setCurrent(NolfaLanguage::fr);
        EXPECT_THAT(printed(words), ::testing::HasSubstr("Usage : nolfa-cli"));
    }
}

TEST(Arguments, versionIsTheBundles)
{
    EXPECT_THAT(printed({"--version"}), ::testing::MatchesRegex("Nolfa [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST(Arguments, wrongUsageHasASentence)
{
    EXPECT_EQ(usageError({}),
        "What shall be done? Give a verb: convert, compare, watermark or formats. See nolfa-cli --help.");
    EXPECT_EQ(usageError({"convert", "--to", "markdown"}), "No file to convert was given. See nolfa-cli --help.");
    EXPECT_EQ(usageError({"convert", "a.docx"}), "--to FORMAT is missing. See nolfa-cli --help.");
    EXPECT_EQ(usageError({"convert", "a.docx", "--to", "doc"}), "There is no format “doc”. See nolfa-cli --help.");
    EXPECT_EQ(usageError({"convert", "a.docx", "--to", "doc"}, NolfaLanguage::fr),
        "Il n’y a pas de format « doc ». Voyez nolfa-cli --help.");
    EXPECT_EQ(usageError({"convert", "a.docx", "--to", "markdown", "--into", "/nonexistent"}),
        "“/nonexistent” is not an existing folder. See nolfa-cli --help.");
    for (const char *jobs : {"0", "-1", "257", "two", "1.5", "99999999999"}) {
        EXPECT_EQ(usageError({"convert", "a.docx", "--to", "markdown", std::string("--jobs=") + jobs}),
            "--jobs takes a number from 1 to 256. See nolfa-cli --help.");
    }
    EXPECT_EQ(usageError({"frobnicate"}), "“frobnicate” means nothing here. See nolfa-cli --help.");
    EXPECT_EQ(usageError({"formats", "--frob"}), "“--frob” means nothing here. See nolfa-cli --help.");
    EXPECT_EQ(
        usageError({"convert", "a.md", "--to"}), "An option lacks its value, or has too many. See nolfa-cli --help.");
    EXPECT_EQ(usageError({"formats", "--lang", "de"}), "--lang is system, en or fr. See nolfa-cli --help.");
    EXPECT_EQ(usageError({"formats", "--paper", "a3"}), "--paper is a4 or usLetter. See nolfa-cli --help.");
}

TEST(Arguments, compareTakesTwoFiles)
{
    const auto arguments = std::get<CompareArguments>(parse({"compare", "a.docx", "--json", "--", "-b.pdf"}).verb);
    EXPECT_EQ(arguments.original, "a.docx");
    EXPECT_EQ(arguments.revised, "-b.pdf");
    EXPECT_TRUE(arguments.asJSON);
    EXPECT_FALSE(arguments.report);
    const std::string two = "compare takes two files: the original, then the revised one. See nolfa-cli --help.";
    EXPECT_EQ(usageError({"compare", "a.md"}), two);
    EXPECT_EQ(usageError({"compare", "a.md", "b.md", "c.md"}), two);
    EXPECT_EQ(usageError({"compare"}, NolfaLanguage::fr),
        "compare demande deux fichiers : l’original, puis la version révisée. Voyez nolfa-cli --help.");
}

TEST(Arguments, aReportIsWhatItsNameEndsIn)
{
    const auto format = [](const char *file) {
        return std::get<CompareArguments>(parse({"compare", "a.md", "b.md", "--report", file}).verb).report->format;
    };
    EXPECT_EQ(format("r.md"), ReportFormat::markdown);
    EXPECT_EQ(format("r.PDF"), ReportFormat::pdf);
    EXPECT_EQ(usageError({"compare", "a.md", "b.md", "--report", "r.docx"}),
        "--report takes a file that ends in .md or .pdf. See nolfa-cli --help.");
    EXPECT_EQ(usageError({"compare", "a.md", "b.md", "--report", "/no/folder/r.md"}),
        "There is no folder for “/no/folder/r.md”. See nolfa-cli --help.");
}

TEST(Arguments, watermarkBeginsWithTheDefaults)
{
    const WatermarkArguments arguments = parseWatermark({"--text", "CONFIDENTIEL"});
    EXPECT_EQ(arguments.input, "a.pdf");
    EXPECT_EQ(arguments.output, "b.pdf");
    EXPECT_EQ(arguments.spec, (WatermarkSpec{.text = "CONFIDENTIEL"}));
    EXPECT_EQ(parseWatermark({"--text", ""}).spec, WatermarkSpec());
}

TEST(Arguments, watermarkTakesEveryField)
{
    const WatermarkSpec expected{.text = "-x",
        .fontName = "DejaVuSans",
        .fontSize = 12.5,
        .colorHex = 0x00FF7F,
        .opacity = 1,
        .rotationDegrees = -30.5,
        .placement = WatermarkSpec::Placement::tiled,
        .tileSpacing = -4,
        .pages = WatermarkSpec::Pages::range(2, 5)};
    EXPECT_EQ(
        parseWatermark({"--text", "-x", "--font", "DejaVuSans", "--size", "12.5", "--color", "#00ff7F", "--opacity",
                           "1", "--angle", "-30.5", "--placement", "tiled", "--spacing", "-4", "--pages", "2-5"})
            .spec,
        expected);
}

TEST(Arguments, watermarkSelectsPagesInThreeWays)
{
    using Pages = WatermarkSpec::Pages;
    const auto pages = [](const char *word) { return parseWatermark({"--text", "x", "--pages", word}).spec.pages; };
    EXPECT_EQ(pages("all"), Pages::all());
    EXPECT_EQ(pages("3-3"), Pages::range(3, 3));
    EXPECT_EQ(pages("3"), Pages::indices({3}));
    EXPECT_EQ(pages("9,1,4,1"), Pages::indices({1, 4, 9}));
}

TEST(Arguments, wrongUsageOfWatermarkHasASentence)
{
    const std::string help = " See nolfa-cli --help.";
    EXPECT_EQ(usageError({"watermark", "--text", "x", "--output", "o"}), "No PDF to stamp was given." + help);
    EXPECT_EQ(usageError({"watermark", "a", "b", "--text", "x", "--output", "o"}),
        "One PDF at a time can be stamped." + help);
    EXPECT_EQ(usageError({"watermark", "a", "--output", "o"}), "--text TEXT is missing." + help);
    EXPECT_EQ(usageError({"watermark", "a", "--text", "x"}), "--output OUT.pdf is missing." + help);
    const auto error = [](std::string option, std::string value) {
        return usageError({"watermark", "a", "--text", "x", "--output", "o", std::move(option), std::move(value)});
    };
    for (const char *value : {"", "0", "-3", "5-2", "0-4", "1-", "-", "1,,2", "1,", "a", "1-2-3", "1-2,5", " 1"}) {
        EXPECT_EQ(error("--pages", value), "--pages is all, a range such as 2-5, or numbers such as 1,4,9." + help)
            << value;
    }
    for (const char *value : {"", "12345", "1234567", "GG0000", "0x1234", "-12345", "##12345"})
        EXPECT_EQ(error("--color", value), "--color takes six hexadecimal digits, as in 6E2433." + help) << value;
    for (const char *value : {"1.01", "-0.1"})
        EXPECT_EQ(error("--opacity", value), "--opacity takes a number from 0 to 1." + help);
    for (const char *option : {"--size", "--angle", "--spacing", "--opacity"}) {
        for (const char *value : {"", "big", "nan", "inf", "1e999", "12pt"})
            EXPECT_EQ(error(option, value), std::string(option) + " takes a number." + help);
    }
    EXPECT_EQ(error("--placement", "Diagonal"), "--placement is diagonal, horizontalCenter or tiled." + help);
}
