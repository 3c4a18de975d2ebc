#include "Engine/UnpackedPackage.h"

#include "Engine/FileName.h"

#include <algorithm>

namespace nolfa {

namespace fs = std::filesystem;

UnpackedPackage::UnpackedPackage(const fs::path &root)
    : m_root(fs::canonical(root))
{
}

const fs::path &UnpackedPackage::canonicalFolder(const fs::path &folder) const
{
    const auto [known, isNew] = m_folders.try_emplace(folder);
    if (isNew) {
        std::error_code failure;
        fs::path canonical = fs::canonical(folder, failure);
        const auto firstDifference = std::mismatch(m_root.begin(), m_root.end(), canonical.begin(), canonical.end());
        if (!failure && firstDifference.first == m_root.end())
            known->second = std::move(canonical);
    }
    return known->second;
}

std::optional<fs::path> UnpackedPackage::part(const fs::path &path) const
{
    const fs::path &folder = canonicalFolder(path.parent_path());
    if (folder.empty())
        return std::nullopt;
    fs::path file = folder / path.filename();
    // The file itself is asked, not what a link leads to.
    std::error_code failure;
    if (!fs::is_regular_file(fs::symlink_status(file, failure)))
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
