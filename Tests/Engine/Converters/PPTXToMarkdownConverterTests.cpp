#include "Engine/Converters/PPTXToMarkdownConverter.h"

#include "Support/Expect.h"
#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"
#include "Support/ZipBuilder.h"

#include <gmock/gmock.h>

using namespace nolfa;
using namespace nolfa::testing;
using enum DocumentFormat;
namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

std::string slideWith(const std::vector<std::string> &paragraphs)
{
    std::string text = "<p:sld>";
    for (const std::string &paragraph : paragraphs)
        text += "<a:p><a:r><a:t>" + paragraph + "</a:t></a:r></a:p>";
    return text + "</p:sld>";
}

struct Relationship {
    std::string id;
    std::string target;
    std::string type = "urn:x/slide";
};

std::string relationships(const std::vector<Relationship> &all)
{
    std::string text = "<Relationships>";
    for (const Relationship &each : all)
        text += "<Relationship Id='" + each.id + "' Type='" + each.type + "' Target='" + each.target + "'/>";
    return text + "</Relationships>";
}

std::string presentation(const std::vector<std::string> &ids)
{
    std::string text = "<p:presentation><p:sldIdLst>";
    for (const std::string &id : ids)
        text += "<p:sldId id='256' r:id='" + id + "'/>";
    return text + "</p:sldIdLst></p:presentation>";
}

class PPTXToMarkdownConverterTest : public ::testing::Test {
protected:
    std::string markdownOf(const ZipBuilder &package)
    {
        const fs::path output = folder / "out.md";
        fs::remove(output);
        PPTXToMarkdownConverter().convert(package.write(folder / "in.pptx"), output, {pptx, markdown}, {});
        return contentOf(output);
    }

    void TearDown() override { EXPECT_THAT(temporary.names(), IsEmpty()) << "scratch is left"; }

    TemporaryFolder folder;
    TemporaryFolder temporary;
    EnvironmentScope environment{"TMPDIR", temporary.path()};
};

} // namespace

TEST_F(PPTXToMarkdownConverterTest, aSlideIsASectionOfBulletsWithItsNotesQuoted)
{
    EXPECT_EQ(markdownOf(ZipBuilder()
                             .add("ppt/slides/slide1.xml", slideWith({"Titre", "un *point*"}))
                             .add("ppt/notesSlides/notesSlide1.xml", slideWith({" Dire bonjour. ", "Puis 1"}))),
        "## Slide 1\n\n- Titre\n- un *point*\n\n> Dire bonjour. Puis 1\n\n");
}

TEST_F(PPTXToMarkdownConverterTest, anEmptySlideAmongOthersKeepsItsMarker)
{
    EXPECT_EQ(
        markdownOf(
            ZipBuilder().add("ppt/slides/slide1.xml", slideWith({})).add("ppt/slides/slide2.xml", slideWith({"x"}))),
        "## Slide 1\n\n_(no text)_\n\n## Slide 2\n\n- x\n\n");
}

TEST_F(PPTXToMarkdownConverterTest, aDeckWithoutTextGivesAnEmptyFile)
{
    EXPECT_EQ(markdownOf(ZipBuilder()
                             .add("ppt/slides/slide1.xml", slideWith({}))
                             .add("ppt/slides/slide2.xml", slideWith({" "}))
                             .add("ppt/notesSlides/notesSlide1.xml", slideWith({" \t "}))),
        "");
    EXPECT_EQ(markdownOf(ZipBuilder().add("hello.txt", "no deck")), "");
}

TEST_F(PPTXToMarkdownConverterTest, notesAloneAreContent)
{
    EXPECT_EQ(markdownOf(ZipBuilder()
                             .add("ppt/slides/slide1.xml", slideWith({}))
                             .add("ppt/notesSlides/notesSlide1.xml", slideWith({"note"}))),
        "## Slide 1\n\n_(no text)_\n\n> note\n\n");
}

TEST_F(PPTXToMarkdownConverterTest, slidesStandInTheOrderOfThePresentation)
{
    EXPECT_EQ(markdownOf(ZipBuilder()
                             .add("ppt/presentation.xml", presentation({"c", "missing", "a", "gone", "b", "a"}))
                             .add("ppt/_rels/presentation.xml.rels",
                                 relationships({{"a", "slides/slide1.xml"}, {"b", "/ppt/slides/slide2.xml"},
                                     {"c", "../ppt/./slides/slide3.xml"}, {"gone", "slides/slide9.xml"}}))
                             .add("ppt/slides/slide1.xml", slideWith({"one"}))
                             .add("ppt/slides/slide2.xml", slideWith({"two"}))
                             .add("ppt/slides/slide3.xml", slideWith({"three"}))
                             .add("ppt/slides/slide4.xml", slideWith({"unlisted"}))),
        "## Slide 1\n\n- three\n\n## Slide 2\n\n- one\n\n## Slide 3\n\n- two\n\n## Slide 4\n\n- one\n\n");
}

TEST_F(PPTXToMarkdownConverterTest, withoutAUsableListTheNumbersDecide)
{
    EXPECT_EQ(markdownOf(ZipBuilder()
                             .add("ppt/slides/slide10.xml", slideWith({"ten"}))
                             .add("ppt/slides/slide2.xml", slideWith({"two"}))
                             .add("ppt/slides/slideX.xml", slideWith({"none"}))
                             .add("ppt/slides/other1.xml", slideWith({"other"}))
                             .add("ppt/slides/slide3.txt", slideWith({"text"}))),
        "## Slide 1\n\n- none\n\n## Slide 2\n\n- two\n\n## Slide 3\n\n- ten\n\n");
}

TEST_F(PPTXToMarkdownConverterTest, notesAreFoundThroughTheSlidesRelationships)
{
    const std::string notesType = "urn:x/relationships/notesSlide";
    EXPECT_EQ(markdownOf(ZipBuilder()
                             .add("ppt/slides/slide7.xml", slideWith({"seven"}))
                             .add("ppt/slides/_rels/slide7.xml.rels",
                                 relationships({{"1", "../notesSlides/notesSlide1.xml", "urn:x/notesMaster"},
                                     {"2", "../notesSlides/missing.xml", notesType},
                                     {"3", "../notesSlides/notesSlide1.xml", notesType},
                                     {"4", "../notesSlides/notesSlide7.xml", notesType}}))
                             .add("ppt/notesSlides/notesSlide1.xml", slideWith({"right"}))
                             .add("ppt/notesSlides/notesSlide7.xml", slideWith({"wrong"}))),
        "## Slide 1\n\n- seven\n\n> right\n\n");
}

TEST_F(PPTXToMarkdownConverterTest, relationshipsWithoutNotesMeanThatThereAreNone)
{
    EXPECT_EQ(markdownOf(ZipBuilder()
                             .add("ppt/slides/slide7.xml", slideWith({"seven"}))
                             .add("ppt/slides/_rels/slide7.xml.rels", relationships({}))
                             .add("ppt/notesSlides/notesSlide7.xml", slideWith({"not guessed"}))),
        "## Slide 1\n\n- seven\n\n");
}

TEST_F(PPTXToMarkdownConverterTest, withoutRelationshipsTheNumberIsTheGuess)
{
    EXPECT_EQ(markdownOf(ZipBuilder()
                             .add("ppt/slides/slide7.xml", slideWith({"seven"}))
                             .add("ppt/notesSlides/notesSlide7.xml", slideWith({"guessed"}))),
        "## Slide 1\n\n- seven\n\n> guessed\n\n");
}

TEST(PPTXToMarkdownConverter, numbersAreTheDigitsOfTheName)
{
    EXPECT_EQ(PPTXToMarkdownConverter::number("/x9/slide12.xml"), 12);
    EXPECT_EQ(PPTXToMarkdownConverter::number("s1l2ide3.xml4"), 123);
    EXPECT_EQ(PPTXToMarkdownConverter::number("slide.xml"), 0);
    EXPECT_EQ(PPTXToMarkdownConverter::number("slide½.xml"), 0);
    EXPECT_EQ(PPTXToMarkdownConverter::number("slide99999999999999999999.xml"), 0);
}

TEST(PPTXToMarkdownConverter, servesOnePair)
{
    EXPECT_THAT(PPTXToMarkdownConverter().pairs(), ElementsAre(ConversionPair{pptx, markdown}));
}
