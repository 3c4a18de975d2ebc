// Who may include whom: the rooms of the house, and the arrows between them.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

const fs::path source = NOLFA_SOURCE;

/// The rooms of the engine, and what each may include besides itself.
const std::map<std::string, std::set<std::string>> engineRooms{
    {"Platform", {}},
    {"Localization", {"Platform"}},
    {"Engine", {"Platform", "Localization"}},
    {"Engine/Converters", {"Platform", "Localization", "Engine"}},
    {"Engine/Google", {"Platform", "Localization", "Engine"}},
    {"Engine/AppleScript", {"Platform", "Localization", "Engine"}},
    {"Compare", {"Platform", "Localization", "Engine", "Engine/Converters"}},
    {"Watermark", {"Platform", "Localization", "Engine"}},
    {"DesignSystem", {"Platform", "Localization"}},
};

/// The one file that knows all converters.
const std::string assemblyPoint = "NolfaKit/Engine/NolfaEngine.cpp";

struct Include {
    std::string file; ///< relative to the project's top
    std::string header;
    bool isAngled;
};

std::string roomOf(const std::string &path)
{
    std::string room;
    for (const auto &[name, allowed] : engineRooms) {
        if (path.starts_with(name + "/") && name.size() > room.size())
            room = name;
    }
    return room;
}

bool isSource(const fs::path &path)
{
    return path.extension() == ".h" || path.extension() == ".cpp" || path.extension() == ".c";
}

/// The header that a line of source includes, with its quotes or angles, if it includes one.
std::string includedBy(std::string line)
{
    std::erase_if(line, [](char c) { return c == ' ' || c == '\t'; });
    constexpr std::string_view directive = "#include";
    if (!line.starts_with(directive))
        return {};
    const std::size_t end = line.find_first_of(">\"", directive.size() + 1);
    return end == std::string::npos ? std::string() : line.substr(directive.size(), end + 1 - directive.size());
}

std::vector<Include> includesBelow(const std::string &folder)
{
    std::vector<Include> result;
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(source / folder)) {
        if (!isSource(entry.path()))
            continue;
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            const std::string header = includedBy(line);
            if (!header.empty()) {
                result.push_back(
                    {fs::relative(entry.path(), source), header.substr(1, header.size() - 2), header.front() == '<'});
            }
        }
    }
    return result;
}

/// The header's path inside the engine, if it is one of ours.
std::optional<std::string> engineHeader(const Include &include)
{
    if (include.isAngled || !fs::exists(source / "NolfaKit" / include.header))
        return std::nullopt;
    return include.header;
}

bool isForeign(const Include &include)
{
    // The standard library and the system's own headers have no folder of a product's in front.
    static const std::set<std::string> systemFolders{"sys"};
    if (!include.isAngled)
        return false;
    const std::size_t slash = include.header.find('/');
    const bool isNamespaced = slash != std::string::npos && !systemFolders.contains(include.header.substr(0, slash));
    const bool isQt = include.header.starts_with('Q') || include.header == "qqml.h";
    return isNamespaced || isQt || include.header == "expat.h" || include.header == "sodium.h";
}

} // namespace

TEST(IncludeDirection, theEngineIncludesOnlyWhatStandsBelow)
{
    const std::vector<Include> includes = includesBelow("NolfaKit");
    ASSERT_FALSE(includes.empty());
    for (const Include &include : includes) {
        const std::optional<std::string> header = engineHeader(include);
        const std::string room = roomOf(include.file.substr(std::string("NolfaKit/").size()));
        ASSERT_FALSE(room.empty()) << include.file << " lies in no room";
        if (!header || include.file == assemblyPoint)
            continue;
        const std::string other = roomOf(*header);
        EXPECT_TRUE(other == room || engineRooms.at(room).contains(other)) << include.file << " includes " << *header;
    }
}

TEST(IncludeDirection, everyQuotedIncludeOfTheEngineIsWrittenFromItsRoot)
{
    for (const Include &include : includesBelow("NolfaKit")) {
        EXPECT_TRUE(include.isAngled || engineHeader(include))
            << include.file << " includes \"" << include.header << '"';
    }
}

TEST(IncludeDirection, foreignLibrariesAreTouchedInPlatformOnly)
{
    // fmt stands where the standard library will have its own; Qt is at home in the design system.
    for (const Include &include : includesBelow("NolfaKit")) {
        const std::string room = roomOf(include.file.substr(std::string("NolfaKit/").size()));
        if (room == "Platform" || room == "DesignSystem" || !isForeign(include))
            continue;
        EXPECT_TRUE(include.header.starts_with("fmt/") && include.file.ends_with(".cpp"))
            << include.file << " includes <" << include.header << '>';
    }
}

TEST(IncludeDirection, theEngineKnowsNothingOfWhatStandsOnIt)
{
    for (const Include &include : includesBelow("NolfaKit")) {
        EXPECT_FALSE(include.header.starts_with("Nolfa/") || include.header.starts_with("CommandLine/"))
            << include.file << " includes " << include.header;
    }
}

TEST(IncludeDirection, theCommandLineKnowsNoScreensAndNoQt)
{
    const std::vector<Include> includes = includesBelow("CommandLine");
    ASSERT_FALSE(includes.empty());
    for (const Include &include : includes) {
        EXPECT_FALSE(include.isAngled && include.header.starts_with('Q')) << include.file << ' ' << include.header;
        const std::optional<std::string> header = engineHeader(include);
        EXPECT_FALSE(header && roomOf(*header) == "DesignSystem") << include.file << ' ' << include.header;
        EXPECT_FALSE(header && roomOf(*header) == "Engine/Converters") << include.file << ' ' << include.header;
    }
}

TEST(IncludeDirection, screensAndTheirModelsKnowNoConverter)
{
    const std::vector<Include> includes = includesBelow("Nolfa");
    ASSERT_FALSE(includes.empty());
    for (const Include &include : includes) {
        const std::optional<std::string> header = engineHeader(include);
        EXPECT_FALSE(header && roomOf(*header) == "Engine/Converters") << include.file << ' ' << include.header;
    }
}

TEST(IncludeDirection, modelsKnowNoScreen)
{
    // Qt Quick comes in with the modules of the windows; a model is tested, and sanitized, without it.
    for (const Include &include : includesBelow("Nolfa")) {
        const fs::path file = include.file;
        const std::string name = file.stem();
        if (name.ends_with("Model") || name == "AppSettings" || file.parent_path() == "Nolfa/Support") {
            EXPECT_FALSE(include.isAngled && (include.header.starts_with("QQ") || include.header == "qqml.h"))
                << include.file << " includes <" << include.header << '>';
        }
    }
}

TEST(IncludeDirection, aSourceIncludesItsOwnHeaderFirst)
{
    std::map<std::string, std::string> first;
    for (const char *folder : {"NolfaKit", "Nolfa", "CommandLine"}) {
        for (const Include &include : includesBelow(folder))
            first.try_emplace(include.file, fs::path(include.header).filename());
    }
    for (const auto &[file, header] : first) {
        const fs::path own = fs::path(file).replace_extension(".h");
        if (file.ends_with(".cpp") && fs::exists(source / own)) {
            EXPECT_EQ(header, own.filename()) << file;
        }
    }
}
