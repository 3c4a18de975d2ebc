#include "Watermark/WatermarkFont.h"

#include "Platform/Typesetter.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <set>

using namespace nolfa;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Not;
using ::testing::StartsWith;

namespace {

constexpr double size = 12;

std::string resolved(std::string_view name)
{
    return WatermarkFont::resolve(name, size).postScriptName;
}

} // namespace

TEST(WatermarkFont, offersTheThreeTypefacesOfTheDesign)
{
    EXPECT_THAT(
        WatermarkFont::brand, ElementsAre("Newsreader24pt-SemiBold", "HankenGrotesk-SemiBold", "IBMPlexMono-Medium"));
}

TEST(WatermarkFont, findsEachBrandFontUnderItsOwnName)
{
    for (const std::string_view name : WatermarkFont::brand)
        EXPECT_EQ(WatermarkFont::resolve(name, 37), (WatermarkFont::Font{std::string(name), 37}));
}

TEST(WatermarkFont, aFontThatIsNotInstalledIsHelvetica)
{
    const std::string helvetica = resolved("Helvetica");
    EXPECT_EQ(resolved("NoSuchFont-Bold"), helvetica);
    EXPECT_TRUE(Typesetter::hasFont(helvetica));
    // Never a font that merely resembles the name.
    EXPECT_EQ(resolved("Newsreader24pt"), helvetica);
    EXPECT_EQ(resolved("newsreader24pt-semibold"), helvetica);
}

TEST(WatermarkFont, anEmptyNameIsHelvetica)
{
    EXPECT_EQ(resolved(""), resolved("Helvetica"));
}

TEST(WatermarkFont, helveticaIsAPlainSansSerif)
{
    EXPECT_THAT(resolved("Helvetica"),
        ::testing::AnyOf("Helvetica", "NimbusSans-Regular", "LiberationSans", "Arimo-Regular", "DejaVuSans"));
}

TEST(WatermarkFont, listsOneFontForEachFamilyInOrder)
{
    const std::vector<std::string> names = WatermarkFont::system();
    EXPECT_THAT(names, Contains("DejaVuSans"));
    EXPECT_THAT(names, Not(Contains("DejaVuSans-Bold")));
    EXPECT_TRUE(std::ranges::is_sorted(names));
    EXPECT_THAT(names, Not(Contains("")));
}

TEST(WatermarkFont, theBundlesOwnFontsAreNoneOfTheSystem)
{
    for (const std::string_view name : WatermarkFont::brand)
        EXPECT_THAT(WatermarkFont::system(), Not(Contains(name)));
}

TEST(WatermarkFont, privateFamiliesNeverShow)
{
    EXPECT_THAT(WatermarkFont::system(), Each(Not(StartsWith("."))));
}

TEST(WatermarkFont, everyFontListedCanBeUsedUnderItsName)
{
    for (const std::string &name : WatermarkFont::system()) {
        EXPECT_EQ(resolved(name), name);
        EXPECT_GT(Typesetter::line("A", name, {}).width, 0) << name;
    }
}
