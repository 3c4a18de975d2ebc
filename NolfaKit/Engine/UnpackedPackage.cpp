#include "Engine/UnpackedPackage.h"

#include "Engine/FileName.h"

#include <algorithm>

namespace nolfa {

namespace fs = std::filesystem;

UnpackedPackage::UnpackedPackage(const fs::path &root)
    : m_root(fs::canonical(root))
{
}

std::optional<fs::path> UnpackedPackage::part(const fs::path &path) const
{
    std::error_code failure;
    const fs::path folder = fs::canonical(path.parent_path(), failure);
    if (failure)
        return std::nullopt;
    const bool isInside
        = std::mismatch(m_root.begin(), m_root.end(), folder.begin(), folder.end()).first == m_root.end();
    fs::path file = folder / path.filename();
    // The file itself is asked, not what a link leads to.
    if (!isInside || !fs::is_regular_file(fs::symlink_status(file, failure)))
        return std::nullopt;
    return file;
}

std::vector<fs::path> UnpackedPackage::parts(const fs::path &folder, std::string_view ext) const
{
    std::vector<fs::path> found;
    std::error_code failure;
    for (fs::directory_iterator entry(folder, failure), end; !failure && entry != end; entry.increment(failure)) {
        if (FileName::pathExtension(entry->path()) != ext)
            continue;
        if (std::optional<fs::path> file = part(entry->path()))
            found.push_back(std::move(*file));
    }
    // Bytes of UTF-8 sort as their code points do.
    std::ranges::sort(found, {}, [](const fs::path &file) { return file.filename().native(); });
    return found;
}

} // namespace nolfa
