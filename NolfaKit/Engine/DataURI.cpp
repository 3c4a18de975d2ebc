#include "Engine/DataURI.h"

#include <array>
#include <cstdint>

namespace nolfa::DataURI {

namespace {

constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::int8_t noDigit = -1;

constexpr std::array<std::int8_t, 256> makeValues()
{
    std::array<std::int8_t, 256> values{};
    values.fill(noDigit);
    for (std::size_t value = 0; value < digits.size(); ++value)
        values[static_cast<unsigned char>(digits[value])] = static_cast<std::int8_t>(value);
    return values;
}

/// What isn't a digit (line ends, padding) is passed over.
std::string base64Decoded(std::string_view text)
{
    static constexpr std::array values = makeValues();
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3 + 3);
    std::uint32_t gathered = 0;
    unsigned bits = 0;
    for (const char c : text) {
        const std::int8_t value = values[static_cast<unsigned char>(c)];
        if (value == noDigit)
            continue;
        gathered = gathered << 6U | static_cast<std::uint32_t>(value);
        bits += 6;
        if (bits >= 8) {
            bits -= 8;
            bytes += static_cast<char>(gathered >> bits & 0xFFU);
        }
    }
    return bytes;
}

int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

} // namespace

std::string encoded(std::string_view bytes)
{
    std::string text = "data:;base64,";
    text.reserve(text.size() + (bytes.size() + 2) / 3 * 4);
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        const auto byte = [&](std::size_t offset) -> std::uint32_t {
            return at + offset < bytes.size() ? static_cast<unsigned char>(bytes[at + offset]) : 0U;
        };
        const std::uint32_t group = byte(0) << 16U | byte(1) << 8U | byte(2);
        text += digits[group >> 18U];
        text += digits[group >> 12U & 63U];
        text += at + 1 < bytes.size() ? digits[group >> 6U & 63U] : '=';
        text += at + 2 < bytes.size() ? digits[group & 63U] : '=';
    }
    return text;
}

std::optional<std::string> decoded(std::string_view address)
{
    constexpr std::string_view scheme = "data:";
    const std::size_t comma = address.find(',');
    if (!address.starts_with(scheme) || comma == std::string_view::npos)
        return std::nullopt;
    const std::string_view content = address.substr(comma + 1);
    if (!address.substr(0, comma).ends_with(";base64"))
        return percentDecoded(content);
    return content.find('%') == std::string_view::npos ? base64Decoded(content)
                                                       : base64Decoded(percentDecoded(content));
}

std::string percentDecoded(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const int high = text[at] == '%' && at + 2 < text.size() ? hexValue(text[at + 1]) : -1;
        const int low = high >= 0 ? hexValue(text[at + 2]) : -1;
        if (low < 0) {
            result += text[at];
            continue;
        }
        result += static_cast<char>(high * 16 + low);
        at += 2;
    }
    return result;
}

} // namespace nolfa::DataURI
