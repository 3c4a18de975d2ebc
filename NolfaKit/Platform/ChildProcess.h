#pragma once

#include "Platform/FileDescriptor.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace nolfa {

/// A started child process, the leader of a process group of its own, with pipes on its output streams.
/// It inherits no other descriptor, and starts with default signal handling.
/// The owner reaps it, or hands it to the ProcessReaper; until then its identifier stays valid.
/// Not thread-safe.
class ChildProcess {
public:
    enum class Input { inherited, piped };

    /// @param executable  absolute path; the PATH isn't searched
    /// @param environment  "NAME=value" each; stand before what is inherited
    /// @throws PlatformError with the system's description when it can't be started.
    [[nodiscard]] static ChildProcess start(const std::filesystem::path &executable,
        const std::vector<std::string> &arguments, const std::optional<std::filesystem::path> &currentDirectory,
        const std::vector<std::string> &environment, Input input);

    ChildProcess(ChildProcess &&other) noexcept;
    ChildProcess &operator=(ChildProcess &&) = delete;
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;
    /// A child that nobody reaped is killed with its group, and waited for.
    ~ChildProcess();

    /// Becomes readable when the child ended.
    [[nodiscard]] int endDescriptor() const noexcept { return m_end.get(); }

    /// Waits for the child's end.
    /// @return its exit status, or the number of the signal that killed it
    std::int32_t reap() noexcept;

    /// Signals the child and all that it started in its group. The child must not have been reaped.
    void signalGroup(int signal) const noexcept;

    /// The parent's ends of the pipes. @c input is closed unless it was asked for.
    FileDescriptor input;
    FileDescriptor output;
    FileDescriptor error;

private:
    ChildProcess(pid_t pid, FileDescriptor end) noexcept;

    pid_t m_pid;
    FileDescriptor m_end;
};

} // namespace nolfa
