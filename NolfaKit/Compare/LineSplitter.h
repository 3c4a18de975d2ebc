#pragma once

#include <string_view>

namespace nolfa {

/// Parts a text at each newline character of Unicode: U+000A to U+000D, U+0085, U+2028 and U+2029. A carriage return
/// and a line feed are two, with an empty line between them.
class LineSplitter {
public:
    /// @param text  must outlive the splitter; an empty one is a single empty line
    explicit LineSplitter(std::string_view text)
        : m_text(text)
    {
    }

    /// The next line is in line(). False behind the last.
    bool next();

    /// Without what ends it.
    [[nodiscard]] std::string_view line() const { return m_line; }

private:
    std::string_view m_text;
    std::string_view m_line;
    std::size_t m_next = 0;
};

} // namespace nolfa
