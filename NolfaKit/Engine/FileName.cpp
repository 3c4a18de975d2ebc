#include "Engine/FileName.h"

#include "Platform/Unicode.h"

namespace nolfa::FileName {

namespace {

std::string lastComponent(const std::filesystem::path &path)
{
    return path.has_filename() ? path.filename().string() : path.parent_path().filename().string();
}

} // namespace

std::string pathExtension(const std::filesystem::path &path)
{
    const std::string name = lastComponent(path);
    const std::size_t dot = name.rfind('.');
    return dot == std::string::npos ? std::string() : name.substr(dot + 1);
}

std::string stem(const std::filesystem::path &path)
{
    const std::string name = lastComponent(path);
    return name.substr(0, name.rfind('.'));
}

std::string display(const std::filesystem::path &path)
{
    return Unicode::repaired(lastComponent(path));
}

} // namespace nolfa::FileName
