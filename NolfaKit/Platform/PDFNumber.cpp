#include "Platform/PDFNumber.h"

#include <array>
#include <charconv>
#include <cmath>

namespace nolfa::PDFNumber {

namespace {

/// Room for the largest double, all of its digits before the point.
using Buffer = std::array<char, 400>;

} // namespace

void append(std::string &out, double value)
{
    constexpr int decimals = 5;
    Buffer buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the next line
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::isfinite(value) ? value : 0.0,
        std::chars_format::fixed, decimals);
    std::string_view text(buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data()));
    text = text.substr(0, text.find_last_not_of('0') + 1);
    if (text.back() == '.')
        text.remove_suffix(1);
    out += text == "-0" ? "0" : text;
}

void append(std::string &out, float value)
{
    Buffer buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the next line
    const auto result = std::to_chars(
        buffer.data(), buffer.data() + buffer.size(), std::isfinite(value) ? value : 0.0F, std::chars_format::fixed);
    out.append(buffer.data(), result.ptr);
}

} // namespace nolfa::PDFNumber
