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
             {"formats", "-h"}, {"convert", "--help", "a.docx"}}) {
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
    EXPECT_EQ(usageError({}), "What shall be done? Give a verb: convert, watermark or formats. See nolfa-cli --help.");
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
