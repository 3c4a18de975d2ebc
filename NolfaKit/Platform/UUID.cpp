#include "Platform/UUID.h"

#include "Platform/PlatformError.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <sys/random.h>

namespace nolfa {

std::string newUUID()
{
    std::array<unsigned char, 16> bytes{};
    if (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
        throw PlatformError(std::strerror(errno));
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0FU) | 0x40U);
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3FU) | 0x80U);

    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        if (index == 4 || index == 6 || index == 8 || index == 10)
            text += '-';
        text += digits[bytes.at(index) >> 4U];
        text += digits[bytes.at(index) & 0x0FU];
    }
    return text;
}

} // namespace nolfa
