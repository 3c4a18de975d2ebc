#include "Compare/LineSplitter.h"

#include <array>

namespace nolfa {

namespace {

/// The bytes that newline characters begin with.
constexpr std::array<bool, 256> mayEndLine = [] {
    std::array<bool, 256> bytes{};
    for (const unsigned byte : {0x0AU, 0x0BU, 0x0CU, 0x0DU, 0xC2U, 0xE2U})
        bytes[byte] = true;
    return bytes;
}();

/// How many bytes the newline character there takes; 0 when it is something else.
std::size_t newlineLength(std::string_view text)
{
    if (text.front() >= 0x0A && text.front() <= 0x0D)
        return 1;
    if (text.starts_with("\u0085"))
        return 2;
    return text.starts_with("\u2028") || text.starts_with("\u2029") ? 3 : 0;
}

} // namespace

bool LineSplitter::next()
{
    if (m_next > m_text.size())
        return false;
    for (std::size_t end = m_next; end < m_text.size(); ++end) {
        if (!mayEndLine[static_cast<unsigned char>(m_text[end])])
            continue;
        if (const std::size_t length = newlineLength(m_text.substr(end)); length > 0) {
            m_line = m_text.substr(m_next, end - m_next);
            m_next = end + length;
            return true;
        }
    }
    m_line = m_text.substr(m_next);
    m_next = m_text.size() + 1;
    return true;
}

} // namespace nolfa
