#include "Platform/File.h"

#include "Platform/CancellationError.h"
#include "Platform/FileDescriptor.h"
#include "Platform/FileWriter.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <thread>

namespace nolfa::File {

namespace fs = std::filesystem;

namespace {

bool isRegular(const fs::path &file)
{
    std::error_code ignored;
    return fs::is_regular_file(file, ignored);
}

FileDescriptor openToRead(const fs::path &file)
{
    return isRegular(file) ? FileDescriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC)) : FileDescriptor();
}

/// @return fewer bytes than asked for at the file's end; absent when they can't be read
std::optional<std::string> readAt(
    const FileDescriptor &file, off_t offset, std::size_t size, const std::stop_token &stop = {})
{
    constexpr std::size_t atOnce = 1U << 23U;
    std::string result;
    result.reserve(size);
    std::size_t filled = 0;
    while (filled < size) {
        throwIfStopped(stop);
        result.resize(std::min(size, filled + atOnce));
        const ssize_t count
            = ::pread(file.get(), result.data() + filled, result.size() - filled, offset + static_cast<off_t>(filled));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return std::nullopt;
        if (count == 0)
            break;
        filled += static_cast<std::size_t>(count);
    }
    result.resize(filled);
    return result;
}

/// An unpacked archive may hold folders that even their owner may not empty.
void openUp(const fs::path &folder) noexcept
{
    try {
        fs::permissions(folder, fs::perms::owner_all, fs::perm_options::add);
        for (const fs::directory_entry &entry : fs::directory_iterator(folder)) {
            if (entry.is_directory() && !entry.is_symlink())
                openUp(entry.path());
        }
    } catch (const fs::filesystem_error &) {
        // What can't be opened up can't be removed either; the next attempt at removal says so.
    }
}

} // namespace

std::optional<std::string> contents(const fs::path &file, const std::stop_token &stop)
{
    const FileDescriptor descriptor = openToRead(file);
    struct stat about { };
    if (!descriptor.isOpen() || ::fstat(descriptor.get(), &about) != 0)
        return std::nullopt;
    return readAt(descriptor, 0, static_cast<std::size_t>(about.st_size), stop);
}

std::string range(const fs::path &file, std::uint64_t offset, std::size_t size)
{
    const FileDescriptor descriptor = openToRead(file);
    if (!descriptor.isOpen())
        return {};
    return readAt(descriptor, static_cast<off_t>(offset), size).value_or(std::string());
}

void write(const fs::path &file, std::string_view bytes)
{
    FileWriter(file).write(bytes);
}

bool isReadable(const fs::path &file)
{
    return isRegular(file) && ::access(file.c_str(), R_OK) == 0;
}

bool isExecutable(const fs::path &file)
{
    return isRegular(file) && ::access(file.c_str(), X_OK) == 0;
}

bool isNameTaken(const fs::path &path)
{
    std::error_code ignored;
    return fs::exists(fs::symlink_status(path, ignored));
}

bool isInMemory(const fs::path &folder)
{
    struct statfs about { };
    return ::statfs(folder.c_str(), &about) == 0 && about.f_type == TMPFS_MAGIC;
}

void makePrivateFolder(const fs::path &folder)
{
    fs::create_directories(folder.parent_path());
    constexpr mode_t ownerOnly = 0700;
    if (::mkdir(folder.c_str(), ownerOnly) != 0)
        throw fs::filesystem_error("mkdir", folder, std::error_code(errno, std::generic_category()));
}

void removeFolder(const fs::path &folder) noexcept
{
    using namespace std::chrono_literals;
    // A child that is just dying may still put a file into a folder that is being emptied.
    constexpr int attempts = 4;
    std::error_code failure;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        fs::remove_all(folder, failure);
        if (!failure)
            return;
        openUp(folder);
        std::this_thread::sleep_for(5ms * attempt);
    }
}

} // namespace nolfa::File
