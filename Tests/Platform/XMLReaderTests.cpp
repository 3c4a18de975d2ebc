#include "Platform/XMLReader.h"

#include "Platform/CancellationError.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <stdexcept>

using namespace nolfa;
using nolfa::testing::TemporaryFolder;
using XMLReader::Outcome;

namespace {

/// Writes down what it hears: "<a x=1>text</a>", pieces of text joined.
class Recorder : public XMLHandler {
public:
    void startElement(std::string_view name, const XMLAttributes &attributes) override
    {
        heard.append("<").append(name);
        attributes.forEach([this](std::string_view key, std::string_view value) {
            heard.append(" ").append(key).append("=").append(value);
        });
        heard += '>';
    }
    void endElement(std::string_view name) override { heard.append("</").append(name).append(">"); }
    void characters(std::string_view text) override { heard += text; }

    std::string heard;
};

std::string heardIn(std::string_view document, Outcome expected = Outcome::wellFormed)
{
    Recorder recorder;
    EXPECT_EQ(XMLReader::read(document, recorder), expected) << document;
    // A file is read in other pieces, and must sound the same.
    const TemporaryFolder folder;
    Recorder fromFile;
    EXPECT_EQ(XMLReader::read(folder.write("x.xml", document), fromFile, {}), expected);
    EXPECT_EQ(fromFile.heard, recorder.heard);
    // And so must the general parser alone.
    Recorder plainly;
    EXPECT_EQ(XMLReader::readPlainly(document, plainly), expected);
    EXPECT_EQ(plainly.heard, recorder.heard);
    return recorder.heard;
}

} // namespace

TEST(XMLReader, tellsElementsAttributesAndText)
{
    EXPECT_EQ(heardIn("<?xml version=\"1.0\"?><a x='1' p:y=\"2\"><b/>t&amp;&#233;</a>"), "<a x=1 p:y=2><b></b>t&é</a>");
}

TEST(XMLReader, prefixesStayAsTheyStand)
{
    EXPECT_EQ(heardIn("<p:a xmlns:p=\"urn:x\"/>"), "<p:a xmlns:p=urn:x></p:a>");
    EXPECT_EQ(heardIn("<p:a/>"), "<p:a></p:a>") << "bound or not";
}

TEST(XMLReader, cdataIsText)
{
    EXPECT_EQ(heardIn("<a><![CDATA[<b>&amp;]]></a>"), "<a><b>&amp;</a>");
}

TEST(XMLReader, entitiesOfTheDocumentAreExpanded)
{
    EXPECT_EQ(heardIn("<!DOCTYPE a [<!ENTITY e 'été'>]><a x='&e;'>&e;</a>"), "<a x=été>été</a>");
}

TEST(XMLReader, otherEncodingsAreRead)
{
    EXPECT_EQ(heardIn("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>"), "<a>é</a>");
    EXPECT_EQ(heardIn(std::string("\xFF\xFE<\0a\0>\0\xE9\0<\0/\0a\0>\0", 18)), "<a>é</a>");
}

TEST(XMLReader, anErrorEndsTheStreamAfterWhatCameBefore)
{
    EXPECT_EQ(heardIn("<a><b>1</b><c x=></c></a>", Outcome::malformed), "<a><b>1</b>");
    EXPECT_EQ(heardIn("<a><b>1</c>", Outcome::malformed), "<a><b>1") << "a mismatched end is an error before its event";
    EXPECT_EQ(heardIn("<a><b x='1' x='2'/>", Outcome::malformed), "<a>");
    EXPECT_EQ(heardIn("<a><b", Outcome::malformed), "<a>");
    EXPECT_EQ(heardIn("", Outcome::malformed), "");
    EXPECT_EQ(heardIn("<a/>junk", Outcome::malformed), "<a></a>");
}

TEST(XMLReader, whereverTheUnusualBeginsNothingIsLostOrToldTwice)
{
    const std::string usual = "<a x=\"1\"><b>text &amp; more</b><c/>été";
    for (const char *unusual : {"<!-- x -->", "<?x y?>", "<![CDATA[x]]>", "&#233;", "\r\n", "]]", "<d >",
             "<d\tx='&lt;'/>", "<d x=\"é\"/>", "<d x = \"1\"/>", "<é/>", "<d></d >", "text]x", "\x7F"})
        (void)heardIn(usual + unusual + (std::string_view(unusual) == "<d >" ? "</d>" : "") + "<e>end</e></a>");
    for (const char *broken :
        {"]]>", "\x01", "&nope;", "\xFF", "\xEF\xBF\xBF", "<d x='1'y='2'/>", "<1/>", "</b>", "<d x='<'/>"})
        (void)heardIn(usual + broken + "<e>end</e></a>", Outcome::malformed);
}

TEST(XMLReader, piecesMayEndAnywhere)
{
    // Longer than any piece, with tags, entities and letters of several bytes across every border.
    for (std::size_t shift = 0; shift < 40; ++shift) {
        std::string document = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>" + std::string(shift, 'x');
        while (document.size() < 3 * 65'536)
            document += "<cell r=\"AB12\" t='s'>é&amp;œ</cell>\n\xF0\x9F\x98\x80";
        (void)heardIn(document + "</a>");
    }
}

TEST(XMLReader, oneTextMayBeLongerThanAPiece)
{
    const std::string text(200'000, 'x');
    EXPECT_EQ(heardIn("<a><b>1</b>" + text + "<c y='" + text + "'/></a>").size(),
        2 * text.size() + std::string("<a><b>1</b><c y=></c></a>").size());
}

TEST(XMLReader, entityBombsEndInAnError)
{
    std::string bomb = "<!DOCTYPE a [<!ENTITY e0 'boom boom boom boom '>";
    for (int level = 1; level < 40; ++level) {
        const std::string before = "&e" + std::to_string(level - 1) + ";";
        bomb += "<!ENTITY e" + std::to_string(level) + " '" + before + before + before + before + "'>";
    }
    Recorder recorder;
    EXPECT_EQ(XMLReader::read(bomb + "]><a>&e39;</a>", recorder), Outcome::malformed);
    EXPECT_LT(recorder.heard.size(), 100U << 20U);
}

TEST(XMLReader, nothingOutsideTheDocumentIsOpened)
{
    const TemporaryFolder folder;
    const std::string secret = folder.write("secret.txt", "secret").string();
    Recorder recorder;
    XMLReader::read("<!DOCTYPE a [<!ENTITY e SYSTEM 'file://" + secret + "'>]><a>&e;</a>", recorder);
    EXPECT_EQ(recorder.heard, "<a></a>");
}

TEST(XMLReader, depthIsNoDanger)
{
    constexpr int depth = 100'000;
    std::string document;
    for (int level = 0; level < depth; ++level)
        document += "<a>";
    for (int level = 0; level < depth; ++level)
        document += "</a>";
    EXPECT_EQ(heardIn(document), document);
}

TEST(XMLReader, whatIsNoFileIsUnreadable)
{
    const TemporaryFolder folder;
    Recorder recorder;
    EXPECT_EQ(XMLReader::read(folder / "missing.xml", recorder, {}), Outcome::unreadable);
    EXPECT_EQ(XMLReader::read(folder.path(), recorder, {}), Outcome::unreadable);
    EXPECT_EQ(recorder.heard, "");
}

TEST(XMLReader, aStopIsObeyed)
{
    const TemporaryFolder folder;
    std::stop_source source;
    source.request_stop();
    Recorder recorder;
    EXPECT_THROW(XMLReader::read(folder.write("x.xml", "<a/>"), recorder, source.get_token()), CancellationError);
}

TEST(XMLReader, aFailureOfTheHandlerPasses)
{
    class Failing : public Recorder {
        void endElement(std::string_view) override { throw std::runtime_error("mine"); }
    };
    Failing failing;
    EXPECT_THROW(XMLReader::read("<a><b/><c/></a>", failing), std::runtime_error);
    EXPECT_EQ(failing.heard, "<a><b>") << "nothing is told after a failure";
}
