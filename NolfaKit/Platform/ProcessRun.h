#pragma once

#include "Platform/ChildProcess.h"

#include <chrono>
#include <stop_token>
#include <string_view>

namespace nolfa {

/// One child from its start to its end: feeds its input, collects both output streams, minds the clock and the
/// stop token. All of it happens in one poll loop on the caller's thread.
class ProcessRun {
public:
    enum class Ending {
        exited, ///< the child ended and both its streams were read to their end
        timedOut,
        cancelled
    };

    /// @param input  what to feed to standard input; must outlive the run. Absent: the child inherits ours
    /// @param environment  "NAME=value" each, before what is inherited
    /// @param limit  counts from the moment when all the input was taken, or refused
    /// @throws PlatformError when the child can't be started
    ProcessRun(const std::filesystem::path &executable, const std::vector<std::string> &arguments,
        std::optional<std::string_view> input, const std::optional<std::filesystem::path> &currentDirectory,
        const std::vector<std::string> &environment, std::chrono::duration<double> limit);

    /// Blocks. A child that is stopped is asked to end, with its whole group, and left to the ProcessReaper; the
    /// caller is kept at most a few milliseconds for a child that obeys at once, so that as a rule nothing writes
    /// any more when this returns.
    Ending wait(const std::stop_token &stop);

    /// After @c exited: the child's status, or the number of the signal that killed it.
    [[nodiscard]] std::int32_t status() const noexcept { return m_status; }
    [[nodiscard]] std::string takeOutput() noexcept { return std::move(m_output); }
    [[nodiscard]] std::string takeError() noexcept { return std::move(m_error); }

private:
    using Clock = std::chrono::steady_clock;

    [[nodiscard]] bool isOver() const noexcept;
    [[nodiscard]] int pollTimeout(bool isGathering) const;
    void startTimer();
    void feed();
    /// @return how many bytes there were
    static std::size_t read(FileDescriptor &stream, std::string &into);
    void interrupt();

    std::string_view m_input;
    std::chrono::duration<double> m_limit;
    std::optional<Clock::time_point> m_deadline;
    std::string m_output;
    std::string m_error;
    std::int32_t m_status = 0;
    bool m_hasEnded = false;
    ChildProcess m_child;
};

} // namespace nolfa
