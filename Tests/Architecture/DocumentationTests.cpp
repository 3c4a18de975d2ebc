// What the documents point to must be there.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

const fs::path source = NOLFA_SOURCE;

std::vector<fs::path> documents()
{
    std::vector<fs::path> files;
    for (const fs::path &folder : {source, source / "samples", source / "Tests/Fixtures"}) {
        for (const fs::directory_entry &entry : fs::directory_iterator(folder))
            files.push_back(entry.path());
    }
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(source / "docs"))
        files.push_back(entry.path());
    std::erase_if(files, [](const fs::path &file) { return file.extension() != ".md"; });
    return files;
}

std::string textOf(const fs::path &file)
{
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// What stands between each @p open and the next @p close.
std::vector<std::string> between(const std::string &text, std::string_view open, char close)
{
    std::vector<std::string> found;
    for (std::size_t start = text.find(open); start != std::string::npos; start = text.find(open, start)) {
        start += open.size();
        const std::size_t end = std::min(text.find(close, start), text.size());
        found.push_back(text.substr(start, end - start));
        start = std::min(end + 1, text.size());
    }
    return found;
}

bool isPathOfTheTree(const std::string &text)
{
    static const std::vector<std::string> rooms{
        "NolfaKit/", "Nolfa/", "CommandLine/", "Tests/", "Fuzz/", "scripts/", "docs/", "samples/"};
    return std::ranges::any_of(rooms, [&text](const std::string &room) { return text.starts_with(room); });
}

} // namespace

TEST(Documentation, linksLeadSomewhere)
{
    std::size_t count = 0;
    for (const fs::path &document : documents()) {
        for (const std::string &target : between(textOf(document), "](", ')')) {
            // Addresses, places within a document, and examples in code are not ours to follow.
            if (target.find_first_of(":#") != std::string::npos || target.starts_with('/'))
                continue;
            EXPECT_TRUE(fs::exists(document.parent_path() / target)) << document << " points to " << target;
            ++count;
        }
    }
    EXPECT_GT(count, 5U);
}

TEST(Documentation, namedPathsOfTheTreeExist)
{
    std::size_t count = 0;
    for (const fs::path &document : documents()) {
        for (const std::string &code : between(textOf(document), "`", '`')) {
            const std::string target = code.substr(0, code.find(' '));
            if (!isPathOfTheTree(target))
                continue;
            EXPECT_TRUE(fs::exists(source / target)) << document << " names " << target;
            ++count;
        }
    }
    EXPECT_GT(count, 10U);
}

TEST(Documentation, everyScriptThatIsNamedCanBeRun)
{
    for (const fs::directory_entry &entry : fs::directory_iterator(source / "scripts")) {
        const bool isScript = textOf(entry.path()).starts_with("#!");
        const bool isExecutable = (entry.status().permissions() & fs::perms::owner_exec) != fs::perms::none;
        EXPECT_EQ(isScript, isExecutable) << entry.path();
    }
}
