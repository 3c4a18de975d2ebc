#include "Engine/PandocDiagnostics.h"

#include "Support/Scopes.h"

#include <gtest/gtest.h>

using namespace nolfa;
using namespace nolfa::testing;

namespace {

struct Both {
    std::string english;
    std::string french;
    bool operator==(const Both &) const = default;
};

Both summary(std::string_view text, int status = 1)
{
    const LanguageScope english(NolfaLanguage::en);
    std::string inEnglish = PandocDiagnostics::summarize(text, status);
    const LanguageScope french(NolfaLanguage::fr);
    return {std::move(inEnglish), PandocDiagnostics::summarize(text, status)};
}

void PrintTo(const Both &both, std::ostream *out)
{
    *out << both.english << " / " << both.french;
}

const Both toolBroken{
    "A bundled tool failed to start. Reinstall Nolfa.", "Un outil intégré n’a pas pu démarrer. Réinstallez Nolfa."};
const Both formatUnknown{"Nolfa asked for an unsupported format. Please report this.",
    "Nolfa a demandé un format non pris en charge. Merci de le signaler."};
const Both notUTF8{"The file is not valid UTF-8 text.", "Le fichier n’est pas un texte UTF-8 valide."};
const Both wordDamaged{"The Word file looks damaged.", "Le fichier Word semble endommagé."};
const Both noReason{
    "The conversion tool stopped without saying why.", "L’outil de conversion s’est arrêté sans dire pourquoi."};

} // namespace

TEST(PandocDiagnostics, status127IsABrokenToolWhateverTheTextSays)
{
    EXPECT_EQ(summary("unknown input format", 127), toolBroken);
    EXPECT_EQ(summary("", 127), toolBroken);
}

TEST(PandocDiagnostics, everyPatternHasItsSentenceInAnyCase)
{
    EXPECT_EQ(summary("DYLD: Library not loaded"), toolBroken);
    EXPECT_EQ(summary("sh: pandoc: Command not found"), toolBroken);
    EXPECT_EQ(summary("Unknown input format foo"), formatUnknown);
    EXPECT_EQ(summary("Unknown output format foo"), formatUnknown);
    EXPECT_EQ(summary("x: Cannot decode byte '\\xe9'"), notUTF8);
    EXPECT_EQ(summary("Could not unzip"), wordDamaged);
    EXPECT_EQ(summary("docx parse error"), wordDamaged);
    EXPECT_EQ(summary("Error parsing docx"), wordDamaged);
    EXPECT_EQ(summary("couldn't parse docx file"), wordDamaged);
}

TEST(PandocDiagnostics, theFirstRuleThatMatchesWins)
{
    EXPECT_EQ(summary("unknown input format\ndyld"), toolBroken);
    EXPECT_EQ(summary("could not unzip, cannot decode byte"), notUTF8);
    EXPECT_EQ(summary("cannot decode byte, unknown output format"), formatUnknown);
}

TEST(PandocDiagnostics, otherTextsKeepTheirFirstTwoLines)
{
    const Both firstAndThird{"First Line third line", "First Line third line"};
    EXPECT_EQ(summary("First Line\n\nthird line"), firstAndThird);
    EXPECT_EQ(summary("  First Line\t\n \u00A0\n third line \nfourth\nfifth"), firstAndThird);
    EXPECT_EQ(summary("only"), (Both{"only", "only"}));
}

TEST(PandocDiagnostics, everyKindOfNewlineSplits)
{
    for (const char *newline : {"\n", "\v", "\f", "\r", "\r\n", "\u0085", "\u2028", "\u2029"})
        EXPECT_EQ(summary(std::string("a") + newline + "b" + newline + "c").english, "a b");
}

TEST(PandocDiagnostics, blanksAloneGiveNoReason)
{
    EXPECT_EQ(summary(""), noReason);
    EXPECT_EQ(summary(" \n\t\n\r\n \u2028"), noReason);
}
