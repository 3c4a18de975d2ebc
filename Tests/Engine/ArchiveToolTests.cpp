#include "Engine/ArchiveTool.h"

#include "Support/Documents.h"
#include "Support/Expect.h"
#include "Support/Processes.h"
#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"
#include "Support/ZipBuilder.h"

#include <gmock/gmock.h>

using namespace nolfa;
using namespace nolfa::testing;
namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

namespace {

class ArchiveToolTest : public ::testing::Test {
protected:
    fs::path archive(const ZipBuilder &builder, std::string_view name = "a.xlsx")
    {
        return builder.write(folder / name);
    }

    void unzip(const fs::path &file, const ArchiveTool::Limits &limits = {})
    {
        ArchiveTool::unzip(file, folder / "out", {}, limits);
    }

    void expectOpeningRefused(const fs::path &file, const ArchiveTool::Limits &limits = {})
    {
        const LanguageScope french(NolfaLanguage::fr);
        expectError(ConversionError::engineFailure("Le fichier n’a pas pu être ouvert."), [&] { unzip(file, limits); });
        NolfaL10n::setCurrent(NolfaLanguage::en);
        expectError(ConversionError::engineFailure("The file couldn't be opened."), [&] { unzip(file, limits); });
        EXPECT_FALSE(fs::exists(folder / "out")) << "nothing was written";
    }

    void expectEscapeRefused(std::string_view name)
    {
        const fs::path file = archive(ZipBuilder().add("fine.txt", "x").add(name, "evil"));
        const LanguageScope english(NolfaLanguage::en);
        expectError(ConversionError::engineFailure(
                        "The file contains an entry that points outside its own folder, so it was not opened."),
            [&] { unzip(file); });
        EXPECT_FALSE(fs::exists(folder / "out")) << name;
    }

    TemporaryFolder folder;
};

/// The bytes of one member as zip deflates it.
std::string deflated(const TemporaryFolder &folder, const std::string &content)
{
    folder.write("deflate/x", content);
    const fs::path archive = folder / "deflate.zip";
    EXPECT_EQ(runProgram("/usr/bin/zip", {"-q", "-X", "-9", archive, "x"}, {}, folder / "deflate").status, 0);
    const std::string bytes = contentOf(archive);
    constexpr std::size_t header = 31;
    return bytes.substr(header, bytes.find("PK\x01\x02") - header);
}

} // namespace

TEST_F(ArchiveToolTest, unpacksIntoAFolderThatItMakes)
{
    ArchiveTool::unzip(archive(ZipBuilder().add("xl/a.xml", "1").add("b é.xml", "2")), folder / "deep/out", {});
    EXPECT_EQ(contentOf(folder / "deep/out/xl/a.xml"), "1");
    EXPECT_EQ(namesIn(folder / "deep/out").size(), 2U);
}

TEST_F(ArchiveToolTest, overwritesWhatStandsThere)
{
    folder.write("out/a.xml", "old");
    unzip(archive(ZipBuilder().add("a.xml", "new")));
    EXPECT_EQ(contentOf(folder / "out/a.xml"), "new");
}

TEST_F(ArchiveToolTest, refusesEntriesThatEscape)
{
    for (const char *name : {"../evil.txt", "a/../../evil.txt", "/etc/x", " /x", "\u2003../x", "a/..", ".."})
        expectEscapeRefused(name);
}

TEST_F(ArchiveToolTest, namesWithDotsInsidePass)
{
    unzip(archive(ZipBuilder().add("a/..b/c", "1").add("a/b../c", "2").add("./e", "3").add(".../d", "4")));
    EXPECT_EQ(contentOf(folder / "out/a/..b/c"), "1");
    EXPECT_EQ(contentOf(folder / "out/.../d"), "4");
}

TEST_F(ArchiveToolTest, whatIsNoArchiveIsRefused)
{
    expectOpeningRefused(folder.write("text.xlsx", "no archive"));
    expectOpeningRefused(folder.write("empty.xlsx", ""));
    expectOpeningRefused(folder / "missing.xlsx");
    expectOpeningRefused(archive(ZipBuilder()));
    const std::string whole = ZipBuilder().add("a.xml", std::string(500, 'x')).bytes();
    expectOpeningRefused(folder.write("cut.xlsx", whole.substr(0, whole.size() / 2)));
}

TEST_F(ArchiveToolTest, encryptedEntriesAreRefusedWithoutAsking)
{
    const fs::path file = archive(ZipBuilder().encrypted().add("a.xml", "xxxxxxxxxxxxxxxx"));
    const LanguageScope english(NolfaLanguage::en);
    expectError(ConversionError::engineFailure("The file couldn't be opened."), [&] { unzip(file); });
}

TEST_F(ArchiveToolTest, theFileNamedIsTheFileOpenedWhateverItsName)
{
    archive(ZipBuilder().add("wrong", "wrong"), "a1.xlsx");
    for (const char *name : {"a[1].xlsx", "a?.xlsx", "a*.xlsx", "a\\1.xlsx", "a[.xlsx", "-a.xlsx", "deux mots.xlsx",
             "caf\xE9.xlsx", "line\nfeed.xlsx"}) {
        unzip(archive(ZipBuilder().add("right", "right"), name));
        EXPECT_THAT(namesIn(folder / "out"), ElementsAre("right")) << name;
        fs::remove_all(folder / "out");
    }
    fs::create_directory(folder / "d[x]*");
    unzip(ZipBuilder().add("right", "right").write(folder / "d[x]*/b[2].xlsx"));
    EXPECT_THAT(namesIn(folder / "out"), ElementsAre("right"));
}

TEST_F(ArchiveToolTest, anArchiveThatClaimsTooMuchIsRefusedBeforeAnythingIsWritten)
{
    const fs::path file = archive(ZipBuilder().add("a", std::string(600, 'x')).add("b", std::string(500, 'x')));
    expectOpeningRefused(file, {.entries = 1});
    expectOpeningRefused(file, {.totalSize = 1099});
    unzip(file, {.entries = 2, .totalSize = 1100});
    EXPECT_EQ(contentOf(folder / "out/b").size(), 500U);
}

TEST_F(ArchiveToolTest, anArchiveThatGrowsTooMuchIsRefused)
{
    const std::string content(1'000'000, ' ');
    const std::string packed = deflated(folder, content);
    const fs::path bomb = archive(
        ZipBuilder().addDeflated("a.xml", packed, crc32(content), static_cast<std::uint32_t>(content.size())));
    expectOpeningRefused(bomb, {.ratioFloor = 100'000});
    unzip(bomb);
    EXPECT_EQ(contentOf(folder / "out/a.xml"), content) << "small ones may grow as they like";
}

TEST_F(ArchiveToolTest, anArchiveThatLiesAboutItsSizeFillsNoDisk)
{
    const std::string content(50'000'000, ' ');
    const fs::path liar = archive(ZipBuilder().addDeflated("a.xml", deflated(folder, content), crc32(content), 10));
    EXPECT_THROW(unzip(liar), ConversionError);
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(folder / "out"))
        EXPECT_LE(entry.file_size(), 10U);
}

TEST_F(ArchiveToolTest, archivesWhoseListOnlyUnzipCanReadAreOpenedToo)
{
    folder.write("in/a", "12345");
    ASSERT_EQ(runProgram("/usr/bin/zip", {"-q", "-fz", "../a.xlsx", "a"}, {}, folder / "in").status, 0);
    unzip(folder / "a.xlsx");
    EXPECT_EQ(contentOf(folder / "out/a"), "12345");
    fs::remove_all(folder / "out");
    expectOpeningRefused(folder / "a.xlsx", {.totalSize = 4});

    // A name of two lines counts twice among the names.
    const fs::path twoLines = archive(ZipBuilder().add("b\nc", "12345"), "b.xlsx");
    unzip(twoLines);
    EXPECT_EQ(namesIn(folder / "out").size(), 1U);
    fs::remove_all(folder / "out");
    expectOpeningRefused(twoLines, {.totalSize = 4});
}

TEST_F(ArchiveToolTest, cancelledBeforeTheStartWritesNothing)
{
    std::stop_source source;
    source.request_stop();
    const fs::path file = archive(ZipBuilder().add("a", "x"));
    expectError(ConversionError::cancelled(), [&] { ArchiveTool::unzip(file, folder / "out", source.get_token()); });
    expectError(
        ConversionError::cancelled(), [&] { ArchiveTool::zip(folder.path(), folder / "b.xlsx", source.get_token()); });
    EXPECT_THAT(folder.names(), ElementsAre("a.xlsx"));
}

TEST_F(ArchiveToolTest, aFolderThatCannotBeMadeIsTheFileSystemsError)
{
    const fs::path file = archive(ZipBuilder().add("a", "x"));
    folder.write("taken", "x");
    EXPECT_THROW(ArchiveTool::unzip(file, folder / "taken/out", {}), fs::filesystem_error);
}

TEST_F(ArchiveToolTest, packsWithNamesFromTheFolder)
{
    folder.write("in/[Content_Types].xml", "1");
    folder.write("in/_rels/.rels", "2");
    ArchiveTool::zip(folder / "in", folder / "out.xlsx", {});
    EXPECT_THAT(partsOf(folder / "out.xlsx"), UnorderedElementsAre("[Content_Types].xml", "_rels/", "_rels/.rels"));
    EXPECT_EQ(partOf(folder / "out.xlsx", "_rels/.rels"), "2");
}

TEST_F(ArchiveToolTest, packingReplacesAnOldArchive)
{
    archive(ZipBuilder().add("old", "old"), "out.xlsx");
    folder.write("in/new", "new");
    ArchiveTool::zip(folder / "in", folder / "out.xlsx", {});
    EXPECT_THAT(partsOf(folder / "out.xlsx"), ElementsAre("new"));
}

TEST_F(ArchiveToolTest, packingThatFailsHasItsSentence)
{
    const LanguageScope english(NolfaLanguage::en);
    fs::create_directory(folder / "empty");
    expectError(ConversionError::engineFailure("The file couldn't be written."),
        [&] { ArchiveTool::zip(folder / "empty", folder / "missing/out.xlsx", {}); });
    NolfaL10n::setCurrent(NolfaLanguage::fr);
    expectError(ConversionError::engineFailure("Le fichier n’a pas pu être écrit."),
        [&] { ArchiveTool::zip(folder / "empty", folder / "missing/out.xlsx", {}); });
}
