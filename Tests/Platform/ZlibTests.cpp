#include "Platform/Zlib.h"

#include "Platform/PlatformError.h"

#include <gtest/gtest.h>

using namespace nolfa;

namespace {

std::string packed(const std::string &text)
{
    Deflater deflater;
    std::string result;
    deflater.append({reinterpret_cast<const unsigned char *>(text.data()), text.size()}, result);
    deflater.finish(result);
    return result;
}

/// Unpacks with pieces of input and output of these sizes.
std::string unpacked(std::string_view bytes, std::size_t inputSize, std::size_t outputSize)
{
    Inflater inflater;
    std::string result;
    std::vector<unsigned char> buffer(outputSize);
    for (;;) {
        const Inflater::Step step = inflater.inflate(bytes.substr(0, inputSize), buffer);
        result.append(reinterpret_cast<const char *>(buffer.data()), step.made);
        bytes.remove_prefix(step.taken);
        if (step.isAtEnd || (step.taken == 0 && step.made == 0))
            return result;
    }
}

} // namespace

TEST(Zlib, whatIsPackedComesBackInPiecesOfAnySize)
{
    std::string text;
    for (int line = 0; line < 20000; ++line)
        text += "line " + std::to_string(line * line) + "\n";
    const std::string bytes = packed(text);
    EXPECT_LT(bytes.size(), text.size() / 2);
    EXPECT_EQ(unpacked(bytes, bytes.size(), text.size() + 1), text);
    EXPECT_EQ(unpacked(bytes, 1, 7), text);
    EXPECT_EQ(unpacked(packed(""), 100, 100), "");
}

TEST(Zlib, damageIsAFailureAndMissingDataAnEarlyEnd)
{
    std::string bytes = packed("one two three one two three");
    EXPECT_LT(unpacked(std::string_view(bytes).substr(0, bytes.size() - 6), 100, 100).size(), 28U);
    bytes.back() = static_cast<char>(bytes.back() + 1);
    EXPECT_THROW((void)unpacked(bytes, 100, 100), PlatformError);
    EXPECT_THROW((void)unpacked("no such thing", 100, 100), PlatformError);
}

TEST(Zlib, theChecksumIsTheOneOfTheStandard)
{
    EXPECT_EQ(crc32Of("123456789"), 0xCBF43926U);
}
