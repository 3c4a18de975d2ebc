#pragma once

#include <unistd.h>
#include <utility>

namespace nolfa {

/// Owns one open file descriptor; -1 is none.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) noexcept
        : m_descriptor(descriptor)
    {
    }
    FileDescriptor(FileDescriptor &&other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1))
    {
    }
    FileDescriptor &operator=(FileDescriptor &&other) noexcept
    {
        if (this != &other) {
            reset();
            m_descriptor = std::exchange(other.m_descriptor, -1);
        }
        return *this;
    }
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;
    ~FileDescriptor() { reset(); }

    [[nodiscard]] int get() const noexcept { return m_descriptor; }
    [[nodiscard]] bool isOpen() const noexcept { return m_descriptor >= 0; }

    /// A failure to close is of no use to anyone here and is swallowed.
    void reset() noexcept
    {
        if (isOpen())
            ::close(std::exchange(m_descriptor, -1));
    }

private:
    int m_descriptor = -1;
};

} // namespace nolfa
