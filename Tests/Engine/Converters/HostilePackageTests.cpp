// Packages made to do harm: each ends in a sentence or an empty result, in little time and memory.

#include "Engine/Converters/PPTXToMarkdownConverter.h"
#include "Engine/Converters/XLSXConverter.h"
#include "Support/Bounds.h"
#include "Support/Documents.h"
#include "Support/Expect.h"
#include "Support/Processes.h"
#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"
#include "Support/ZipBuilder.h"

#include <gmock/gmock.h>
#include <random>

using namespace nolfa;
using namespace nolfa::testing;
using enum DocumentFormat;
namespace fs = std::filesystem;
using ::testing::IsEmpty;

namespace {

constexpr const char *sheetPath = "xl/worksheets/sheet1.xml";

class HostilePackageTest : public ::testing::Test {
protected:
    /// The Markdown of a package, or absent when it was refused with a sentence.
    std::optional<std::string> convert(const fs::path &input, const Converter &converter, DocumentFormat source)
    {
        const fs::path output = folder / "out.md";
        fs::remove(output);
        const Bounds bounds;
        try {
            converter.convert(input, output, {source, markdown}, {});
        } catch (const ConversionError &error) {
            EXPECT_FALSE(error.errorDescription().empty());
            EXPECT_FALSE(fs::exists(output)) << "a refusal leaves no output";
            return std::nullopt;
        }
        return contentOf(output);
    }
    std::optional<std::string> workbook(const fs::path &input) { return convert(input, XLSXConverter(), xlsx); }
    std::optional<std::string> workbook(const ZipBuilder &package)
    {
        return workbook(package.write(folder / "in.xlsx"));
    }
    std::optional<std::string> deck(const ZipBuilder &package)
    {
        return convert(package.write(folder / "in.pptx"), PPTXToMarkdownConverter(), pptx);
    }

    void TearDown() override { EXPECT_THAT(temporary.names(), IsEmpty()) << "scratch is left"; }

    TemporaryFolder folder;
    TemporaryFolder temporary;
    EnvironmentScope environment{"TMPDIR", temporary.path()};
};

std::string sheetOf(const std::string &rows)
{
    return "<worksheet><sheetData>" + rows + "</sheetData></worksheet>";
}

std::string repeated(const std::string &text, std::size_t count)
{
    std::string result;
    result.reserve(text.size() * count);
    for (std::size_t index = 0; index < count; ++index)
        result += text;
    return result;
}

} // namespace

TEST_F(HostilePackageTest, linksAsPartsAreNotRead)
{
    folder.write("secret.xml", sheetOf("<row><c t='str'><v>secret</v></c></row>"));
    EXPECT_EQ(workbook(ZipBuilder().addLink(sheetPath, (folder / "secret.xml").string())), "");
    EXPECT_EQ(workbook(ZipBuilder().addLink("xl/worksheets", folder.path().string())), "");
    EXPECT_EQ(deck(ZipBuilder().addLink("ppt/slides/slide1.xml", (folder / "secret.xml").string())), "");
}

TEST_F(HostilePackageTest, targetsThatLeadOutsideAreNotRead)
{
    folder.write("secret.xml", sheetOf("<row><c t='str'><v>secret</v></c></row>"));
    const std::string up = repeated("../", 12) + (folder / "secret.xml").string().substr(1);
    const std::string rels
        = "<Relationships><Relationship Id='1' Type='x/notesSlide' Target='" + up + "'/></Relationships>";
    EXPECT_EQ(workbook(ZipBuilder()
                           .add("xl/workbook.xml", "<workbook><sheets><sheet name='a' r:id='1'/></sheets></workbook>")
                           .add("xl/_rels/workbook.xml.rels", rels)),
        "");
    EXPECT_EQ(deck(ZipBuilder()
                       .add("ppt/presentation.xml", "<p:presentation><p:sldId r:id='1'/></p:presentation>")
                       .add("ppt/_rels/presentation.xml.rels", rels)
                       .add("ppt/slides/slide1.xml", "<p:sld/>")
                       .add("ppt/slides/_rels/slide1.xml.rels", rels)),
        "");
}

TEST_F(HostilePackageTest, namesThatEscapeAreRefusedAndWriteNothing)
{
    const std::string sheet = sheetOf("<row><c><v>1</v></c></row>");
    const std::string absolute = (folder / "evil.xml").string();
    const std::vector<std::string> names{"../evil.xml", "xl/../../evil.xml", absolute, " " + absolute};
    for (const std::string &name : names) {
        EXPECT_EQ(workbook(ZipBuilder().add(sheetPath, sheet).add(name, "evil")), std::nullopt) << name;
        EXPECT_EQ(deck(ZipBuilder().add(name, "evil").add(sheetPath, sheet)), std::nullopt) << name;
    }
    EXPECT_THAT(folder.names(), ::testing::UnorderedElementsAre("in.xlsx", "in.pptx"));
}

TEST_F(HostilePackageTest, aPartOfAGigabyteOfSpacesIsRefused)
{
    // Deflated by zip from a stream; a megabyte on the disc.
    const std::string script = "head -c 1073741824 /dev/zero | tr '\\0' ' ' | zip -q -1 spaces.xlsx -";
    ASSERT_EQ(runProgram("/bin/sh", {"-c", script}, {}, folder.path()).status, 0);
    EXPECT_EQ(workbook(folder / "spaces.xlsx"), std::nullopt);

    // The same, but it says in its directory that it holds ten bytes.
    std::string liar = contentOf(folder / "spaces.xlsx");
    constexpr std::size_t claimedSize = 24;
    const std::size_t entry = liar.rfind("PK\x01\x02");
    ASSERT_NE(entry, std::string::npos);
    liar.replace(entry + claimedSize, 4, std::string("\x0A\0\0\0", 4));
    EXPECT_EQ(workbook(folder.write("liar.xlsx", liar)), std::nullopt);
}

TEST_F(HostilePackageTest, archivesThatWouldFillTheDiscAreRefused)
{
    const std::string deflatedNothing("\x03\0", 2);
    EXPECT_EQ(workbook(ZipBuilder().addDeflated(sheetPath, deflatedNothing, 0, 0xF0000000U)), std::nullopt)
        << "its size";
    EXPECT_EQ(workbook(ZipBuilder().addDeflated(sheetPath, deflatedNothing, 0, 200U << 20U)), std::nullopt)
        << "its ratio";
    ZipBuilder crowd;
    for (int entry = 0; entry <= 100'000; ++entry)
        crowd.add("xl/" + std::to_string(entry), "");
    EXPECT_EQ(workbook(crowd), std::nullopt) << "its entries";
    EXPECT_EQ(deck(crowd), std::nullopt);
}

TEST_F(HostilePackageTest, depthIsNoDanger)
{
    const std::string deep = repeated("<a>", 100'000);
    EXPECT_EQ(workbook(ZipBuilder().add(sheetPath, deep)), "");
    EXPECT_EQ(deck(ZipBuilder().add("ppt/slides/slide1.xml", repeated("<a:p>", 100'000))), "");
    EXPECT_EQ(
        workbook(
            ZipBuilder().add("xl/workbook.xml", deep).add("xl/styles.xml", deep).add("xl/sharedStrings.xml", deep)),
        "");
}

TEST_F(HostilePackageTest, entityBombsEndInLittle)
{
    std::string bomb = "<!DOCTYPE x [<!ENTITY e0 'boom'>";
    for (int level = 1; level < 30; ++level) {
        const std::string before = "&e" + std::to_string(level - 1) + ";";
        bomb += "<!ENTITY e" + std::to_string(level) + " '" + repeated(before, 10) + "'>";
    }
    bomb += "]>";
    EXPECT_EQ(workbook(ZipBuilder().add(sheetPath, bomb + sheetOf("<row><c t='str'><v>&e29;</v></c></row>"))), "");
    EXPECT_EQ(deck(ZipBuilder().add("ppt/slides/slide1.xml", bomb + "<p:sld><a:p><a:t>&e29;</a:t></a:p></p:sld>")), "");
}

TEST_F(HostilePackageTest, oneCellAtTheFarCornerIsOneRow)
{
    const std::optional<std::string> text
        = workbook(ZipBuilder().add(sheetPath, sheetOf("<row r='1048576'><c r='XFD1048576'><v>1</v></c></row>")));
    ASSERT_TRUE(text);
    EXPECT_EQ(std::ranges::count(*text, '\n'), 3);
    EXPECT_EQ(std::ranges::count(*text, '|'), 2 * 16'385);
}

TEST_F(HostilePackageTest, aGridWithoutEndIsRefused)
{
    const std::string rows = repeated("<row><c r='XFD1'/></row>", 100'000);
    EXPECT_EQ(workbook(ZipBuilder().add(sheetPath, sheetOf(rows))), std::nullopt);
    EXPECT_EQ(
        workbook(ZipBuilder().add(sheetPath, sheetOf("<row><c r='ZZZZZZZZZZZZZZZZZZZZ1'/></row>"))), std::nullopt);
}

TEST_F(HostilePackageTest, aSharedStringUsedAMillionTimesIsRefused)
{
    const ZipBuilder package
        = ZipBuilder()
              .add("xl/sharedStrings.xml", "<sst><si><t>" + std::string(100'000, 'x') + "</t></si></sst>")
              .add(sheetPath, sheetOf(repeated("<row><c t='s'><v>0</v></c></row>", 100'000)));
    EXPECT_EQ(workbook(package), std::nullopt);
}

TEST_F(HostilePackageTest, aPartThatIsListedWithoutEndIsRefused)
{
    EXPECT_EQ(workbook(ZipBuilder()
                           .add("xl/workbook.xml",
                               "<workbook><sheets>" + repeated("<sheet r:id='1'/>", 200'000) + "</sheets></workbook>")
                           .add("xl/_rels/workbook.xml.rels",
                               "<Relationships><Relationship Id='1' Target='worksheets/sheet1.xml'/></Relationships>")
                           .add(sheetPath, sheetOf(repeated("<x/>", 200'000)))),
        std::nullopt);
    EXPECT_EQ(deck(ZipBuilder()
                       .add("ppt/presentation.xml", "<p:x>" + repeated("<p:sldId r:id='1'/>", 200'000) + "</p:x>")
                       .add("ppt/_rels/presentation.xml.rels",
                           "<Relationships><Relationship Id='1' Target='slides/slide1.xml'/></Relationships>")
                       .add("ppt/slides/slide1.xml", "<p:sld>" + repeated("<x/>", 200'000) + "</p:sld>")),
        std::nullopt);
}

TEST_F(HostilePackageTest, entriesOfTheSameNameEndInOneOfThem)
{
    const std::optional<std::string> text
        = workbook(ZipBuilder()
                       .add(sheetPath, sheetOf("<row><c t='str'><v>first</v></c></row>"))
                       .add(sheetPath, sheetOf("<row><c t='str'><v>second</v></c></row>")));
    EXPECT_TRUE(!text || *text == "| first |\n| --- |\n\n" || *text == "| second |\n| --- |\n\n") << *text;
}

TEST_F(HostilePackageTest, encryptedAndTruncatedPackagesAreRefused)
{
    EXPECT_EQ(workbook(ZipBuilder().encrypted().add(sheetPath, std::string(100, 'x'))), std::nullopt);
    const std::string whole = ZipBuilder().add(sheetPath, sheetOf("<row><c><v>1</v></c></row>")).bytes();
    for (std::size_t size = 0; size < whole.size(); size += 7)
        EXPECT_EQ(workbook(folder.write("cut.xlsx", whole.substr(0, size))), std::nullopt) << size;
}

TEST_F(HostilePackageTest, randomBytesAreRefused)
{
    std::mt19937 random(1); // NOLINT: the same bytes each time
    for (int turn = 0; turn < 20; ++turn) {
        std::string bytes(random() % 3000, '\0');
        std::ranges::generate(bytes, [&random] { return static_cast<char>(random()); });
        EXPECT_EQ(workbook(folder.write("random.xlsx", bytes)), std::nullopt);
        EXPECT_EQ(workbook(folder.write("random.xlsx", "PK\x03\x04" + bytes)), std::nullopt);
    }
}

TEST_F(HostilePackageTest, randomlyDamagedPartsEndSomehow)
{
    const std::string sheet = sheetOf("<row r='1'><c r='A1' t='s'><v>0</v></c><c r='B1' s='1'><v>45000</v></c></row>"
                                      "<row r='2'><c r='A2' t='inlineStr'><is><t>x</t></is></c></row>");
    std::mt19937 random(2); // NOLINT: the same damage each time
    for (int turn = 0; turn < 60; ++turn) {
        std::string damaged = sheet;
        for (int bytes = 0; bytes < 4; ++bytes)
            damaged[random() % damaged.size()] = static_cast<char>(random());
        EXPECT_TRUE(
            workbook(ZipBuilder().add("xl/sharedStrings.xml", "<sst><si><t>s</t></si></sst>").add(sheetPath, damaged)));
    }
}
