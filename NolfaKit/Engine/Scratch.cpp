#include "Engine/Scratch.h"

#include "Platform/File.h"
#include "Platform/UUID.h"

namespace nolfa {

Scratch::Scratch()
    : m_dir(std::filesystem::temp_directory_path() / ("nolfa-" + newUUID()))
{
    File::makePrivateFolder(m_dir);
}

void Scratch::cleanup() noexcept
{
    File::removeFolder(m_dir);
}

} // namespace nolfa
