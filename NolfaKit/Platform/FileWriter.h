#pragma once

#include "Platform/FileDescriptor.h"

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
