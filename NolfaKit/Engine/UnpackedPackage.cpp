#include "Engine/UnpackedPackage.h"

#include "Engine/ArchiveTool.h"
#include "Engine/ConversionError.h"
#include "Engine/FileName.h"
#include "Platform/File.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace nolfa {

namespace fs = std::filesystem;

namespace {

constexpr const char *sharedMemory = "/dev/shm";
/// What a package may claim, in bytes and entries, and still be unpacked in memory.
constexpr std::uint64_t smallSize = 8ULL << 20U;
constexpr std::uint64_t fewEntries = 10'000;
/// Bytes that a package which lies about its sizes gets there at most.
constexpr std::uint64_t mostInMemory = 256ULL << 20U;

bool isPlaceOrdered()
{
    constexpr std::array names{"TMPDIR", "TMP", "TEMP", "TEMPDIR"};
    return std::ranges::any_of(names, [](const char *name) { return std::getenv(name) != nullptr; });
}

bool hasMemoryToSpare()
{
    std::error_code failure;
    const fs::space_info space = fs::space(sharedMemory, failure);
    return !failure && space.available >= 2 * mostInMemory && File::isInMemory(sharedMemory);
}

/// @return the folder with all files; none when they must go to the disc
std::unique_ptr<const Scratch> unpackInMemory(const ArchiveTool::Checked &archive, const std::stop_token &stop)
{
    if (archive.unpacked > smallSize || archive.entries > fewEntries || isPlaceOrdered() || !hasMemoryToSpare())
        return nullptr;
    try {
        auto scratch = std::make_unique<const Scratch>(sharedMemory);
        ArchiveTool::unpack(archive, scratch->dir(), stop,
            std::min(archive.unpacked, mostInMemory / std::max<std::uint64_t>(archive.entries, 1)));
        return scratch;
    } catch (const fs::filesystem_error &) {
        return nullptr;
    } catch (const ConversionError &error) {
        // No room after all, or one large file among many; what is wrong with the archive shows on the disc too.
        if (!std::holds_alternative<ConversionError::EngineFailure>(error.value()))
            throw;
        return nullptr;
    }
}

} // namespace

UnpackedPackage::UnpackedPackage(const fs::path &root)
    : m_root(fs::canonical(root))
{
}

UnpackedPackage::UnpackedPackage(std::unique_ptr<const Scratch> scratch)
    : m_scratch(std::move(scratch))
    , m_root(fs::canonical(m_scratch->dir()))
{
}

UnpackedPackage UnpackedPackage::unpack(const fs::path &archive, const std::stop_token &stop)
{
    const ArchiveTool::Checked checked = ArchiveTool::check(archive, stop);
    std::unique_ptr<const Scratch> scratch = unpackInMemory(checked, stop);
    if (!scratch) {
        scratch = std::make_unique<const Scratch>();
        ArchiveTool::unpack(checked, scratch->dir(), stop);
    }
    return UnpackedPackage(std::move(scratch));
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
