#include "Nolfa/Features/Settings/AboutInfo.h"

#include "Support/TemporaryFolder.h"

#include <QVariant>
#include <fstream>
#include <gtest/gtest.h>

using namespace nolfa;
using namespace nolfa::testing;

namespace {

/// What a pane would see of a bundle with that Info.json.
struct Seen {
    explicit Seen(const std::string &info)
    {
        std::ofstream(folder / "Info.json") << info;
        const AboutInfo about{Bundle(folder.path())};
        version = about.property("version").toString().toStdString();
        url = about.property("donationURL").toUrl().toString().toStdString();
        isReal = about.property("hasRealDonationLink").toBool();
    }

    TemporaryFolder folder;
    std::string version;
    std::string url;
    bool isReal = false;
};

} // namespace

TEST(AboutInfo, theVersionIsTheBundles)
{
    EXPECT_EQ(Seen(R"({"CFBundleShortVersionString": "2.5.1"})").version, "2.5.1");
    EXPECT_EQ(Seen("{}").version, "");
    EXPECT_EQ(AboutInfo().property("version").toString().toStdString(),
        Bundle::main().value("CFBundleShortVersionString").value());
}

TEST(AboutInfo, aDonationAddressOfTheBundleIsOffered)
{
    const Seen seen(R"({"NolfaDonationURL": "https://example.org/tip?a=b"})");
    EXPECT_EQ(seen.url, "https://example.org/tip?a=b");
    EXPECT_TRUE(seen.isReal);
}

TEST(AboutInfo, aPlaceholderOrNoAddressIsNot)
{
    EXPECT_FALSE(Seen("{}").isReal);
    EXPECT_FALSE(Seen(R"({"NolfaDonationURL": ""})").isReal);
    EXPECT_FALSE(Seen(R"({"NolfaDonationURL": "https://example.org/REPLACE_WITH_PAGE"})").isReal);
}
