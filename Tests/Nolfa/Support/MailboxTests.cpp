#include "Nolfa/Support/Mailbox.h"

#include "Nolfa/Support/EventLoop.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <optional>
#include <vector>

using namespace nolfa;
using namespace nolfa::testing;
using namespace std::chrono_literals;

class MailboxTests : public ::testing::Test {
protected:
    MailboxTests() { ensureApplication(); }
};

TEST_F(MailboxTests, lettersArriveOnTheMailboxsThreadInTheirOrder)
{
    constexpr int count = 1'000;
    Mailbox mailbox;
    std::vector<int> seen;
    const std::thread::id here = std::this_thread::get_id();
    std::jthread sender([&] {
        for (int name = 0; name < count; ++name) {
            mailbox.post([&seen, here, name] {
                EXPECT_EQ(std::this_thread::get_id(), here);
                seen.push_back(name);
            });
        }
    });
    ASSERT_TRUE(spinUntil([&] { return seen.size() == count; }));
    EXPECT_TRUE(std::ranges::is_sorted(seen));
}

TEST_F(MailboxTests, nothingIsDeliveredBeforeTheEventLoopTurns)
{
    Mailbox mailbox;
    bool delivered = false;
    mailbox.post([&] { delivered = true; });
    EXPECT_FALSE(delivered);
    QCoreApplication::processEvents();
    EXPECT_TRUE(delivered);
}

TEST_F(MailboxTests, aLetterMayPostAnother)
{
    Mailbox mailbox;
    int delivered = 0;
    mailbox.post([&] { mailbox.post([&] { ++delivered; }); });
    EXPECT_TRUE(spinUntil([&] { return delivered == 1; }));
}

TEST_F(MailboxTests, manyLettersLeaveRoomForOtherEvents)
{
    Mailbox mailbox;
    int delivered = 0;
    for (int letter = 0; letter < 100; ++letter) {
        mailbox.post([&] {
            ++delivered;
            std::this_thread::sleep_for(1ms);
        });
    }
    QCoreApplication::processEvents();
    EXPECT_GT(delivered, 0);
    EXPECT_LT(delivered, 100) << "the loop was given back before all had been delivered";
    int later = -1;
    mailbox.post([&] { later = delivered; });
    EXPECT_TRUE(spinUntil([&] { return later >= 0; }));
    EXPECT_EQ(later, 100) << "what came later waits for what came before";
}

TEST_F(MailboxTests, lettersGoWithTheMailbox)
{
    bool delivered = false;
    {
        Mailbox mailbox;
        mailbox.post([&] { delivered = true; });
    }
    QCoreApplication::processEvents();
    EXPECT_FALSE(delivered);
}
