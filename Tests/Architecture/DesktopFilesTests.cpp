// What the desktop is told of the application, in three places, must be the same.

#include "Support/TemporaryFolder.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <sstream>
#include <string>
#include <vector>

using ::testing::HasSubstr;
using ::testing::UnorderedElementsAreArray;

namespace {

const std::filesystem::path source = NOLFA_SOURCE;
const std::string identifier = "app.pelgo.nolfa";

std::string textOf(const std::filesystem::path &file)
{
    return nolfa::testing::contentOf(source / file);
}

/// What stands after a word, to each end.
std::vector<std::string> after(const std::string &text, const std::string &word, char end)
{
    std::vector<std::string> found;
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) {
        const std::size_t start = at + word.size();
        found.push_back(text.substr(start, text.find(end, start) - start));
    }
    return found;
}

std::vector<std::string> split(const std::string &list, char separator)
{
    std::vector<std::string> parts;
    std::istringstream stream(list);
    for (std::string part; std::getline(stream, part, separator);)
        parts.push_back(part);
    return parts;
}

} // namespace

TEST(DesktopFiles, entryAndMetainfoNameTheSameTypes)
{
    const std::string entry = textOf("Resources/Desktop/" + identifier + ".desktop");
    const std::vector<std::string> lists = after(entry, "\nMimeType=", '\n');
    ASSERT_EQ(lists.size(), 1U);
    const std::string metainfo = textOf("Resources/Desktop/" + identifier + ".metainfo.xml.in");
    const std::vector<std::string> types = split(lists.front(), ';');
    EXPECT_GE(types.size(), 7U);
    EXPECT_THAT(after(metainfo, "<mediatype>", '<'), UnorderedElementsAreArray(types));
}

TEST(DesktopFiles, theEntryTheMetainfoAndTheWindowGoByOneName)
{
    const std::string entry = textOf("Resources/Desktop/" + identifier + ".desktop");
    EXPECT_THAT(entry, HasSubstr("\nIcon=" + identifier + "\n"));
    EXPECT_THAT(entry, HasSubstr("\nExec=Nolfa %F\n"));
    const std::string metainfo = textOf("Resources/Desktop/" + identifier + ".metainfo.xml.in");
    EXPECT_THAT(metainfo, HasSubstr("<id>" + identifier + "</id>"));
    EXPECT_THAT(metainfo, HasSubstr(">" + identifier + ".desktop</launchable>"));
    EXPECT_THAT(textOf("Nolfa/App/main.cpp"), HasSubstr("setDesktopFileName(\"" + identifier + "\")"));
}
