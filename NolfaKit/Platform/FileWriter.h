#pragma once

#include "Platform/FileDescriptor.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace nolfa {

/// A new file that is written in pieces: text is gathered in one buffer and goes to the disc as it fills.
/// Not thread-safe.
class FileWriter {
public:
    /// @throws std::filesystem::filesystem_error
    explicit FileWriter(const std::filesystem::path &file);

    /// Writes these bytes at once.
    /// @throws std::filesystem::filesystem_error
    void write(std::string_view bytes);

    /// Has the system copy a part of another file, where it can.
    /// @return how many bytes it copied; what is left must be read and written
    /// @throws std::filesystem::filesystem_error when there is no room
    [[nodiscard]] std::uint64_t copy(int source, std::uint64_t offset, std::uint64_t size);

    /// What was appended here is written by flushIfLarge() or finish(), and is empty afterwards.
    std::string text;

    /// Writes once enough has gathered.
    /// @throws std::filesystem::filesystem_error
    void flushIfLarge();

    /// Writes what is left. Without it the file lacks its end.
    /// @throws std::filesystem::filesystem_error
    void finish();

private:
    std::filesystem::path m_file;
    FileDescriptor m_descriptor;
};

} // namespace nolfa
