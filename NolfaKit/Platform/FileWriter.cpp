#include "Platform/FileWriter.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nolfa {

namespace {

constexpr std::size_t large = 1U << 18U;

[[noreturn]] void fail(const std::filesystem::path &file)
{
    throw std::filesystem::filesystem_error("write", file, std::error_code(errno, std::generic_category()));
}

} // namespace

FileWriter::FileWriter(const std::filesystem::path &file)
    : m_file(file)
{
    constexpr mode_t everybodysUmask = 0666;
    m_descriptor = FileDescriptor(::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, everybodysUmask));
    if (!m_descriptor.isOpen())
        fail(m_file);
}

void FileWriter::write(std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(m_descriptor.get(), bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR)
            fail(m_file);
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
}

std::uint64_t FileWriter::copy(int source, std::uint64_t offset, std::uint64_t size)
{
    auto from = static_cast<off64_t>(offset);
    std::uint64_t done = 0;
    while (done < size) {
        const ssize_t count
            = ::copy_file_range(source, &from, m_descriptor.get(), nullptr, static_cast<std::size_t>(size - done), 0);
        if (count < 0 && errno == ENOSPC)
            fail(m_file);
        if (count <= 0)
            break;
        done += static_cast<std::uint64_t>(count);
    }
    return done;
}

void FileWriter::flushIfLarge()
{
    if (text.size() >= large)
        finish();
}

void FileWriter::finish()
{
    write(text);
    text.clear();
}

} // namespace nolfa
