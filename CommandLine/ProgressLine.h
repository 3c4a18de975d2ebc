#pragma once

#include <cstddef>
#include <string_view>

namespace nolfa::CommandLine {

/// One line on the terminal behind standard error that says how far the work is, and sentences above it.
/// Not thread-safe.
class ProgressLine {
public:
    /// @param isShown  false: sentences only
    explicit ProgressLine(bool isShown);
    ProgressLine(const ProgressLine &) = delete;
    ProgressLine &operator=(const ProgressLine &) = delete;
    ~ProgressLine();

    /// @param name  what was finished or is under way
    void show(std::size_t done, std::size_t total, std::string_view name);

    /// Takes the line away, so that something else can be printed.
    void clear();

    /// A sentence on standard error, made safe for a terminal.
    void say(std::string_view sentence);

private:
    bool m_isShown;
    bool m_isDrawn = false;
};

} // namespace nolfa::CommandLine
