#include "Nolfa/Support/FileURL.h"

#include <gtest/gtest.h>

using namespace nolfa;

TEST(FileURL, pathsSurviveTheWayThereAndBackByteForByte)
{
    for (const char *path : {"/in/a.md", "/in/a b#?%25&+;é.md", "/in/caf\xE9.md", "/in/line\nfeed", "/\xFF\xFE", "/"}) {
        const QUrl url = FileURL::fromPath(path);
        EXPECT_TRUE(url.isLocalFile()) << path;
        EXPECT_EQ(FileURL::toPath(url), std::filesystem::path(path)) << path;
        // Through the text that a drop carries.
        EXPECT_EQ(FileURL::toPath(QUrl::fromEncoded(url.toEncoded())), std::filesystem::path(path)) << path;
    }
}

TEST(FileURL, anAddressOfThisMachineIsAPath)
{
    EXPECT_EQ(FileURL::toPath(QUrl("file://localhost/in/a.md")), std::filesystem::path("/in/a.md"));
    EXPECT_EQ(FileURL::toPath(QUrl::fromLocalFile("/in/é.md")), std::filesystem::path("/in/é.md"));
}

TEST(FileURL, otherAddressesAreNone)
{
    for (const char *address :
        {"https://example.org/a.md", "file://server/a.md", "", "a.md", "file:///a%00.md", "qrc:/a"})
        EXPECT_EQ(FileURL::toPath(QUrl(address)), std::nullopt) << address;
}
