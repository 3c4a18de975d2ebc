// What the documents point to must be there.

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
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

std::vector<std::string> matches(const std::string &text, const std::regex &pattern)
{
    std::vector<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), pattern), end; match != end; ++match)
        found.push_back((*match)[1]);
    return found;
}

} // namespace

TEST(Documentation, linksLeadSomewhere)
{
    static const std::regex link(R"(\]\(([^)#:]+)\))");
    std::size_t count = 0;
    for (const fs::path &document : documents()) {
        for (const std::string &target : matches(textOf(document), link)) {
            EXPECT_TRUE(fs::exists(document.parent_path() / target)) << document << " points to " << target;
            ++count;
        }
    }
    EXPECT_GT(count, 5U);
}

TEST(Documentation, namedPathsOfTheTreeExist)
{
    static const std::regex path(R"(`((?:NolfaKit|Nolfa|CommandLine|Tests|Fuzz|scripts|docs|samples)/[\w./-]+)[` ])");
    std::size_t count = 0;
    for (const fs::path &document : documents()) {
        for (const std::string &target : matches(textOf(document), path)) {
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
