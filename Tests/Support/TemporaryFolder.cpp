#include "Support/TemporaryFolder.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <stdexcept>

namespace nolfa::testing {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder()
{
    std::string name = (fs::temp_directory_path() / "nolfa-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr)
        throw std::runtime_error("no temporary folder");
    m_path = fs::canonical(name);
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

fs::path TemporaryFolder::write(std::string_view name, std::string_view content) const
{
    fs::path file = m_path / name;
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
    return file;
}

std::vector<std::string> TemporaryFolder::names() const
{
    return namesIn(m_path);
}

std::vector<std::string> namesIn(const fs::path &folder)
{
    std::vector<std::string> names;
    for (const fs::directory_entry &entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
}

std::string contentOf(const fs::path &file)
{
    std::ifstream stream(file, std::ios::binary);
    EXPECT_TRUE(stream.is_open()) << file;
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace nolfa::testing
