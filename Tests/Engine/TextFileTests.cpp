#include "Engine/TextFile.h"

#include "Platform/CancellationError.h"
#include "Support/Expect.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace nolfa;
using namespace nolfa::testing;

TEST(TextFile, utf8IsReadAsItStandsWithItsMark)
{
    const TemporaryFolder folder;
    EXPECT_EQ(TextFile::read(folder.write("a", "été\r\n")), "été\r\n");
    EXPECT_EQ(TextFile::read(folder.write("b", "\xEF\xBB\xBFx")), "\xEF\xBB\xBFx");
    EXPECT_EQ(TextFile::read(folder.write("c", "")), "");
}

TEST(TextFile, marksTellOfWiderEncodings)
{
    const TemporaryFolder folder;
    EXPECT_EQ(TextFile::read(folder.write("a", std::string("\xFF\xFE\xE9\0", 4))), "é");
    EXPECT_EQ(TextFile::read(folder.write("b", std::string("\xFE\xFF\0\xE9", 4))), "é");
}

TEST(TextFile, anythingElseIsLatin1)
{
    const TemporaryFolder folder;
    EXPECT_EQ(TextFile::read(folder.write("a", "caf\xE9")), "café");
    EXPECT_EQ(TextFile::read(folder.write("b", std::string("\xFF\xFE\0\xD8", 4))), "ÿþ" + std::string(1, '\0') + "Ø")
        << "a mark that lies";
}

TEST(TextFile, aLongTextIsOneText)
{
    const TemporaryFolder folder;
    // Longer than what is looked at in one go, which here ends in the middle of a letter.
    std::string text = "x";
    for (int i = 0; i < 4'300'000; ++i)
        text += "é";
    EXPECT_TRUE(TextFile::read(folder.write("a", text)) == text);
    const std::string broken = text + "\xE9";
    EXPECT_EQ(TextFile::read(folder.write("b", broken)).size(), 1 + 2 * (broken.size() - 1)) << "ISO Latin 1";
    std::stop_source source;
    source.request_stop();
    EXPECT_THROW(static_cast<void>(TextFile::read(folder / "a", source.get_token())), CancellationError);
}

TEST(TextFile, whatCannotBeReadIsUnreadable)
{
    const TemporaryFolder folder;
    const auto read = [](const std::filesystem::path &url) {
        expectError(ConversionError::unreadableInput(url), [&] { (void)TextFile::read(url); });
    };
    read(folder / "missing.md");
    read(folder.path());
    const std::filesystem::path huge = folder.write("huge.md", "x");
    std::filesystem::resize_file(huge, 1ULL << 40U);
    read(huge);
}
