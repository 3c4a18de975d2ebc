#pragma once

#include <filesystem>
#include <string_view>

namespace nolfa {

/// A private temporary directory that lives as long as the object. Belongs to the one conversion that made it.
class Scratch {
public:
    /// Makes "nolfa-" and a new UUID in the system's temporary directory, for the user's eyes only.
    /// @throws std::filesystem::filesystem_error
    Scratch();
    /// As above, in a folder that is there.
    explicit Scratch(const std::filesystem::path &parent);
    Scratch(const Scratch &) = delete;
    Scratch &operator=(const Scratch &) = delete;
    ~Scratch() { cleanup(); }

    [[nodiscard]] const std::filesystem::path &dir() const noexcept { return m_dir; }

    /// The path of a name inside; creates nothing.
    [[nodiscard]] std::filesystem::path file(std::string_view name) const { return m_dir / name; }

    /// Removes the directory with all that lies in it. Swallows failures, and may run twice.
    void cleanup() noexcept;

    /// Gives @p body a new Scratch, and hands on its result or failure once the directory is gone.
    template <typename Body> static auto withScratch(Body &&body)
    {
        const Scratch scratch;
        return body(scratch);
    }

private:
    std::filesystem::path m_dir;
};

} // namespace nolfa
