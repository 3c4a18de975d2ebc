#include "Engine/Scratch.h"

#include "Platform/File.h"
#include "Platform/UUID.h"

namespace nolfa {

Scratch::Scratch()
    : Scratch(std::filesystem::temp_directory_path())
{
}

Scratch::Scratch(const std::filesystem::path &parent)
    : m_dir(parent / ("nolfa-" + newUUID()))
{
    File::makePrivateFolder(m_dir);
}

void Scratch::cleanup() noexcept
{
    File::removeFolder(m_dir);
}

} // namespace nolfa
