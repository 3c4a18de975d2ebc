#include "Platform/FileWriter.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

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
