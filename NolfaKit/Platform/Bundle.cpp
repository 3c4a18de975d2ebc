#include "Platform/Bundle.h"

#include "Platform/File.h"
#include "Platform/JSON.h"

#include <algorithm>

namespace nolfa {

Bundle::Bundle(std::filesystem::path root)
    : m_root(std::move(root))
{
}

Bundle Bundle::main()
{
    std::error_code ignored;
    const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe", ignored);
    return Bundle(executable.parent_path().parent_path() / "share" / "nolfa");
}

std::optional<std::filesystem::path> Bundle::resource(
    std::string_view name, std::string_view extension, std::string_view subfolder) const
{
    std::string file(name);
    if (!extension.empty())
        file.append(".").append(extension);
    std::filesystem::path candidate = m_root / subfolder / file;
    std::error_code ignored;
    if (!std::filesystem::exists(candidate, ignored))
        return std::nullopt;
    return candidate;
}

std::vector<std::filesystem::path> Bundle::resources(std::string_view extension, std::string_view subfolder) const
{
    const std::string wanted = "." + std::string(extension);
    std::vector<std::filesystem::path> found;
    std::error_code ignored;
    for (const std::filesystem::directory_entry &entry :
        std::filesystem::directory_iterator(m_root / subfolder, ignored)) {
        if (entry.path().extension() == wanted && entry.is_regular_file(ignored))
            found.push_back(entry.path());
    }
    std::ranges::sort(found);
    return found;
}

std::optional<std::string> Bundle::value(std::string_view key) const
{
    const std::optional<std::string> text = File::contents(m_root / "Info.json");
    const std::optional<JSON> info = text ? JSON::parse(*text) : std::nullopt;
    const JSON *member = info ? info->find(key) : nullptr;
    return member == nullptr ? std::nullopt : member->string();
}

} // namespace nolfa
