#include "Engine/OutputNaming.h"

#include "Engine/FileName.h"
#include "Platform/File.h"

#include <mutex>
#include <set>
#include <utility>

namespace nolfa {

namespace fs = std::filesystem;

/// The names of all outputs that are being made in this process.
struct OutputClaims {
    std::mutex mutex;
    std::set<fs::path> held;

    static OutputClaims &shared()
    {
        static OutputClaims claims;
        return claims;
    }

    /// One spelling for each place, so that a folder reached through a link is the same folder.
    static fs::path keyOf(const fs::path &url)
    {
        std::error_code ignored;
        return fs::weakly_canonical(url.parent_path(), ignored) / url.filename();
    }

    /// The caller holds the mutex.
    [[nodiscard]] fs::path firstFree(const fs::path &directory, const std::string &base, std::string_view ext) const
    {
        const std::string ending = "." + std::string(ext);
        fs::path candidate = directory / (base + ending);
        for (std::uint64_t count = 2; File::isNameTaken(candidate) || held.contains(keyOf(candidate)); ++count)
            candidate = directory / std::string(base).append(" ").append(std::to_string(count)).append(ending);
        return candidate;
    }

    OutputClaim claim(const fs::path &directory, const std::string &base, std::string_view ext)
    {
        const std::scoped_lock lock(mutex);
        fs::path url = firstFree(directory, base, ext);
        held.insert(keyOf(url));
        return OutputClaim(std::move(url));
    }
};

OutputClaim::OutputClaim(fs::path url)
    : m_url(std::move(url))
{
}

OutputClaim::OutputClaim(OutputClaim &&other) noexcept
    : m_url(std::exchange(other.m_url, fs::path()))
{
}

OutputClaim::~OutputClaim()
{
    if (m_url.empty())
        return;
    OutputClaims &claims = OutputClaims::shared();
    const std::scoped_lock lock(claims.mutex);
    claims.held.erase(OutputClaims::keyOf(m_url));
}

namespace OutputNaming {

fs::path unique(const fs::path &directory, const std::string &base, std::string_view ext)
{
    OutputClaims &claims = OutputClaims::shared();
    const std::scoped_lock lock(claims.mutex);
    return claims.firstFree(directory, base, ext);
}

OutputClaim claim(const fs::path &directory, const std::string &base, std::string_view ext)
{
    return OutputClaims::shared().claim(directory, base, ext);
}

fs::path sibling(
    const fs::path &file, std::string_view suffix, std::string_view ext, const std::optional<fs::path> &directory)
{
    return unique(directory.value_or(file.parent_path()), FileName::stem(file) + std::string(suffix), ext);
}

} // namespace OutputNaming

} // namespace nolfa
