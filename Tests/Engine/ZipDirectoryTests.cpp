#include "Engine/ZipDirectory.h"

#include "Support/Documents.h"
#include "Support/Processes.h"
#include "Support/TemporaryFolder.h"
#include "Support/ZipBuilder.h"

#include <gtest/gtest.h>

using namespace nolfa;
using namespace nolfa::testing;
using namespace std::string_literals;
namespace fs = std::filesystem;
using ZipDirectory::Totals;

namespace {

constexpr std::size_t endSize = 22;

class ZipDirectoryTest : public ::testing::Test {
protected:
    std::optional<Totals> totals(const std::string &bytes)
    {
        return ZipDirectory::totals(folder.write("a.zip", bytes));
    }

    /// The archive with a field of its end record overwritten.
    std::optional<Totals> withEndField(std::size_t at, const std::string &value)
    {
        return totals(std::string(whole).replace(whole.size() - endSize + at, value.size(), value));
    }

    /// The archive with a field of its second entry overwritten.
    std::optional<Totals> withEntryField(std::size_t at, const std::string &value)
    {
        return totals(std::string(whole).replace(whole.rfind("PK\x01\x02") + at, value.size(), value));
    }

    TemporaryFolder folder;
    std::string whole = ZipBuilder().add("a.xml", std::string(500, 'a')).add("b.xml", std::string(70, 'b')).bytes();
};

} // namespace

TEST_F(ZipDirectoryTest, sumsWhatTheEntriesClaim)
{
    EXPECT_EQ(totals(whole), (Totals{.entries = 2, .unpacked = 570, .packed = 570}));
    EXPECT_EQ(totals(ZipBuilder().addDeflated("a.xml", "1234", 0, 4'000'000'000U).bytes()),
        (Totals{.entries = 1, .unpacked = 4'000'000'000U, .packed = 4}));
    EXPECT_EQ(totals(ZipBuilder().bytes()), Totals());
}

TEST_F(ZipDirectoryTest, readsWhatZipWrites)
{
    folder.write("in/word/a.xml", std::string(100'000, 'x'));
    folder.write("in/é.txt", "12345");
    ASSERT_EQ(runProgram("/bin/sh", {"-c", "echo a comment | zip -qrz ../a.zip ."}, {}, folder / "in").status, 0);
    const std::optional<Totals> found = ZipDirectory::totals(folder / "a.zip");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->entries, 3U) << "a folder is an entry";
    EXPECT_EQ(found->unpacked, 100'005U);
    EXPECT_LT(found->packed, 1000U);
}

TEST_F(ZipDirectoryTest, hasNoOpinionAboutALargeArchive)
{
    folder.write("a", "12345");
    ASSERT_EQ(runProgram("/usr/bin/zip", {"-q", "-fz", "a.zip", "a"}, {}, folder.path()).status, 0);
    EXPECT_EQ(ZipDirectory::totals(folder / "a.zip"), std::nullopt);
    EXPECT_EQ(withEndField(8, "\xFF\xFF\xFF\xFF"), std::nullopt);
    EXPECT_EQ(withEntryField(20, "\xFF\xFF\xFF\xFF"), std::nullopt);
    EXPECT_EQ(withEntryField(24, "\xFF\xFF\xFF\xFF"), std::nullopt);
}

TEST_F(ZipDirectoryTest, hasNoOpinionWhenALocatorStandsBeforeTheEnd)
{
    // Twenty bytes that are the comment of the last entry as well as the locator of another list.
    std::string bytes = ZipBuilder().add("a.xml", "a").bytes();
    const std::size_t entry = bytes.rfind("PK\x01\x02");
    bytes.insert(bytes.size() - endSize, "PK\x06\x07" + std::string(16, '\0'));
    bytes[entry + 32] = 20;
    bytes[bytes.size() - endSize + 12] = static_cast<char>(bytes[bytes.size() - endSize + 12] + 20);
    EXPECT_EQ(totals(bytes), std::nullopt);
    bytes[bytes.size() - endSize - 20] = 'x';
    EXPECT_EQ(totals(bytes)->entries, 1U) << "with any other comment it is sound";
}

TEST_F(ZipDirectoryTest, hasNoOpinionAboutListsThatContradictTheirEnd)
{
    EXPECT_EQ(totals("x" + whole), std::nullopt) << "something in front";
    EXPECT_EQ(totals(std::string(whole).insert(whole.size() - endSize, "x")), std::nullopt) << "something between";
    EXPECT_EQ(withEndField(4, "\x01"), std::nullopt) << "another disk";
    EXPECT_EQ(withEndField(6, "\x01"), std::nullopt) << "the list on another disk";
    EXPECT_EQ(withEndField(8, "\x01"), std::nullopt) << "two numbers of entries";
    EXPECT_EQ(withEndField(8, "\x01\x00\x01\x00"s), std::nullopt) << "an entry too many";
    EXPECT_EQ(withEndField(8, "\x03\x00\x03\x00"s), std::nullopt) << "an entry too few";
    EXPECT_EQ(withEndField(12, "\xF0\xFF\xFF\xFF\x20\x00\x00\x00"s), std::nullopt) << "a list of 4 GB";
    EXPECT_EQ(withEntryField(0, "PK\x01\x03"), std::nullopt) << "no entry";
    EXPECT_EQ(withEntryField(30, "\xFF\xFF"), std::nullopt) << "an entry that ends past the list";
}

TEST_F(ZipDirectoryTest, whatIsNoArchiveHasNoTotals)
{
    EXPECT_EQ(totals(""), std::nullopt);
    EXPECT_EQ(totals("PK\x05\x06"), std::nullopt);
    EXPECT_EQ(totals(whole.substr(0, whole.size() - 1)), std::nullopt);
    EXPECT_EQ(totals(whole.substr(0, whole.size() / 2)), std::nullopt);
    EXPECT_EQ(ZipDirectory::totals(folder / "missing"), std::nullopt);
    EXPECT_EQ(ZipDirectory::totals(folder.path()), std::nullopt);
}

TEST_F(ZipDirectoryTest, everyCutAndEveryFlippedByteIsSurvived)
{
    for (std::size_t at = 0; at < whole.size(); ++at) {
        totals(whole.substr(at));
        std::string flipped = whole;
        flipped[at] = static_cast<char>(~flipped[at]);
        const std::optional<Totals> found = totals(flipped);
        EXPECT_TRUE(!found || found->entries == 2) << at;
    }
}
