// Text that nobody wrote to be read: bounded time and memory, and never a crash.

#include "Compare/ComparisonReport.h"
#include "Compare/DocumentComparer.h"
#include "Engine/ConversionError.h"
#include "Support/Bounds.h"
#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"

#include <atomic>
#include <gmock/gmock.h>
#include <random>
#include <thread>

using namespace nolfa;
using namespace nolfa::testing;
namespace fs = std::filesystem;

namespace {

std::string repeated(std::string_view text, std::size_t times)
{
    std::string result;
    result.reserve(text.size() * times);
    for (std::size_t i = 0; i < times; ++i)
        result += text;
    return result;
}

/// Words of a large vocabulary on one line.
std::string line(std::size_t size, unsigned seed)
{
    std::mt19937 random(seed);
    std::string text;
    text.reserve(size + 16);
    while (text.size() < size)
        text += 'w' + std::to_string(random() % 50'000) + ' ';
    return text;
}

DocumentComparison compareTexts(const TemporaryFolder &folder, std::string_view left, std::string_view right)
{
    return DocumentComparer::compare(
        folder.write("left.md", left), folder.write("right.md", right), ConversionService({}));
}

} // namespace

TEST(HostileText, aHundredMegabytesOfOneLine)
{
    const TemporaryFolder folder;
    const Bounds bounds(std::chrono::seconds(60), 1200);
    constexpr std::size_t size = 100'000'000;
    fs::path left;
    fs::path right;
    {
        const std::string text = line(size, 1);
        left = folder.write("a.md", text);
        right = folder.write("b.md", "begins " + text + " ends");
    }
    const DocumentComparison comparison = DocumentComparer::compare(left, right, ConversionService({}));
    EXPECT_EQ(comparison.summary.blocksModified, 1U);
    EXPECT_GT(comparison.summary.wordsAdded, 10'000'000U) << "beyond the budget the block is replaced whole";
}

TEST(HostileText, aMillionHeadings)
{
    const TemporaryFolder folder;
    const Bounds bounds(std::chrono::seconds(20), 800);
    const std::string empty = repeated("#\n", 1'000'000);
    EXPECT_EQ(compareTexts(folder, empty, repeated("## \n", 1'000'000)).summary, ComparisonSummary{});
    const std::string same = repeated("# a\n", 1'000'000);
    EXPECT_EQ(compareTexts(folder, same, same + "# b\n").changeCount(), 1U);
    std::string different;
    for (int i = 0; i < 1'000'000; ++i)
        different += "# " + std::to_string(i) + '\n';
    EXPECT_EQ(compareTexts(folder, different, same).changeCount(), 2'000'000U);
}

TEST(HostileText, brokenUTF8AndLoneSurrogates)
{
    using namespace std::string_literals;
    const TemporaryFolder folder;
    const Bounds bounds;
    const std::string surrogates = "\xFF\xFE"s + repeated("\x00\xD8\x61\x00"s, 200'000);
    const std::string broken = repeated("\xED\xA0\x80 \xC3 \xF5\xFF a\n\n", 50'000);
    const DocumentComparison comparison = compareTexts(folder, surrogates, broken);
    EXPECT_FALSE(comparison.isIdentical());
    EXPECT_FALSE(ComparisonReport::html(comparison).empty());
}

TEST(HostileText, NULsAndMarksThatTurnTheText)
{
    using namespace std::string_literals;
    const TemporaryFolder folder;
    const Bounds bounds(std::chrono::seconds(20));
    const std::string text = repeated("\0\u202E\u200F a\u0301\u0301 \u05D0\u0600 "s, 300'000);
    EXPECT_EQ(compareTexts(folder, text, text + "b").changeCount(), 1U);
}

TEST(HostileText, oneCharacterOfAMillionMarks)
{
    const TemporaryFolder folder;
    const Bounds bounds(std::chrono::seconds(20));
    const std::string accents = "a" + repeated("\u0301", 1'000'000);
    const std::string joiners = "a" + repeated("\u0E33", 1'000'000) + repeated("\U0001F1E6", 500'000);
    EXPECT_EQ(compareTexts(folder, accents, joiners).changeCount(), 2U);
}

TEST(HostileText, aFenceThatIsNeverClosed)
{
    const TemporaryFolder folder;
    const Bounds bounds;
    const std::string code = "```\n" + repeated("a line of code\n", 500'000);
    EXPECT_EQ(compareTexts(folder, code, code + "more\n").summary.blocksModified, 1U);
}

TEST(HostileText, blocksThatStandInAnotherOrderAndRepeat)
{
    // As many differences as are looked for, and as many pairs as there can be.
    std::mt19937 random(2);
    std::string left;
    std::string right;
    for (int i = 0; i < 60'000; ++i) {
        left += "| " + std::to_string(random() % 10) + " |\n";
        right += "| " + std::to_string(random() % 10) + " |\n";
    }
    const TemporaryFolder folder;
    const Bounds bounds(std::chrono::seconds(20));
    EXPECT_FALSE(compareTexts(folder, left, right).isIdentical());
}

TEST(HostileText, aStopReturnsAtOnceWhereverItComes)
{
    const TemporaryFolder folder;
    const fs::path left = folder.write("a.md", line(20'000'000, 1));
    const fs::path right = folder.write("b.md", line(20'000'000, 2));
    for (const int delay : {1, 5, 10, 20, 40, 60, 80, 100, 120}) {
        auto best = std::chrono::steady_clock::duration::max();
        for (int round = 0; round < 5; ++round) {
            std::stop_source source;
            std::atomic<std::chrono::steady_clock::time_point> asked{};
            std::jthread stopper([&] {
                std::this_thread::sleep_for(std::chrono::milliseconds(delay));
                asked = std::chrono::steady_clock::now();
                source.request_stop();
            });
            try {
                static_cast<void>(
                    DocumentComparer::compare(left, right, ConversionService({}), {}, source.get_token()));
                stopper.join();
                best = {}; // done before the stop
            } catch (const ConversionError &error) {
                EXPECT_NE(error.as<ConversionError::Cancelled>(), nullptr);
                best = std::min(best, std::chrono::steady_clock::now() - asked.load());
            }
        }
        EXPECT_LT(best, std::chrono::milliseconds(100)) << "after " << delay << " ms";
    }
}
