#include "Nolfa/Support/SupportInfo.h"

#include <gtest/gtest.h>

using namespace nolfa;

TEST(SupportInfo, aDonationAddressThatStillHoldsAPlaceholderIsNotReal)
{
    for (const char *placeholder : {"REPLACE_WITH_THE_PAGE", "https://example.org/REPLACE_WITH_THE_PAGE",
             "https://REPLACE-WITH.example.org/?page=REPLACE_WITH"})
        EXPECT_FALSE(SupportInfo::hasRealDonationLink(QUrl(QString::fromLatin1(placeholder)))) << placeholder;
}

TEST(SupportInfo, anAbsentDonationAddressIsNotReal)
{
    EXPECT_FALSE(SupportInfo::hasRealDonationLink(std::nullopt));
}

TEST(SupportInfo, anyOtherDonationAddressIsReal)
{
    EXPECT_TRUE(SupportInfo::hasRealDonationLink(QUrl("https://example.org/tip")));
}
