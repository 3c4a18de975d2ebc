#include "Platform/ByteSink.h"

#include "Platform/PlatformError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <unistd.h>

namespace nolfa {

void ByteSink::write(const FileRange &range)
{
    std::array<char, 1U << 16U> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled before it is read
    for (std::uint64_t done = 0; done < range.size;) {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(buffer.size(), range.size - done));
        const ssize_t count = ::pread(range.descriptor, buffer.data(), wanted, static_cast<off_t>(range.offset + done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            throw PlatformError("A file can't be read to its end.");
        write(std::string_view(buffer.data(), static_cast<std::size_t>(count)));
        done += static_cast<std::uint64_t>(count);
    }
}

void FileSink::write(const FileRange &range)
{
    const std::uint64_t done = m_file.copy(range.descriptor, range.offset, range.size);
    ByteSink::write(FileRange{range.descriptor, range.offset + done, range.size - done});
}

} // namespace nolfa
