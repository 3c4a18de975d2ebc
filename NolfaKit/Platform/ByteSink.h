#pragma once

#include "Platform/FileWriter.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace nolfa {

/// A part of an open file.
struct FileRange {
    int descriptor = -1;
    std::uint64_t offset = 0;
    std::uint64_t size = 0;
};

/// Takes the bytes of a file in their order. Not thread-safe.
class ByteSink {
public:
    ByteSink() = default;
    ByteSink(const ByteSink &) = delete;
    ByteSink &operator=(const ByteSink &) = delete;
    virtual ~ByteSink() = default;

    /// @throws std::filesystem::filesystem_error when they can't be kept
    virtual void write(std::string_view bytes) = 0;

    /// Takes what lies in another file.
    /// @throws as write(), and PlatformError when the other file has become shorter
    virtual void write(const FileRange &range);
};

/// Into a file. Whole ranges of other files are left to the system, which needs no copy of them in this process.
class FileSink : public ByteSink {
public:
    /// @param file  must outlive this
    explicit FileSink(FileWriter &file)
        : m_file(file)
    {
    }

    void write(std::string_view bytes) override { m_file.write(bytes); }
    void write(const FileRange &range) override;

private:
    FileWriter &m_file;
};

/// Into memory.
class MemorySink : public ByteSink {
public:
    using ByteSink::write;
    void write(std::string_view more) override { bytes += more; }

    std::string bytes;
};

} // namespace nolfa
