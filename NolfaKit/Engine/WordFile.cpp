#include "Engine/WordFile.h"

#include "Engine/ConversionError.h"
#include "Platform/File.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <string_view>

namespace nolfa::WordFile {

namespace {

using namespace std::string_view_literals;

constexpr auto zipStart = "PK\x03\x04"sv;
/// The end record of a zip archive lies in its last bytes, behind at most a comment of 64 KiB (APPNOTE 4.3.16).
constexpr auto zipEnd = "PK\x05\x06"sv;
constexpr std::size_t longestEnd = 22 + 65535;
/// An encrypted document is a compound file with a stream of this name ([MS-OFFCRYPTO] 2.3.4).
constexpr auto compoundStart = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv;
constexpr auto encryptedStream = "E\0n\0c\0r\0y\0p\0t\0e\0d\0P\0a\0c\0k\0a\0g\0e\0"sv;

std::string readAt(std::ifstream &file, std::streamoff offset, std::size_t size)
{
    std::string bytes(size, '\0');
    file.clear();
    file.seekg(offset);
    file.read(bytes.data(), static_cast<std::streamsize>(size));
    bytes.resize(static_cast<std::size_t>(std::max<std::streamsize>(file.gcount(), 0)));
    return bytes;
}

/// Finds the name wherever the compound file keeps its folder, in bounded memory.
bool holdsEncryptedStream(std::ifstream &file)
{
    constexpr std::size_t chunk = 1U << 20U;
    std::streamoff offset = 0;
    for (;;) {
        const std::string bytes = readAt(file, offset, chunk);
        if (bytes.find(encryptedStream) != std::string::npos)
            return true;
        if (bytes.size() < chunk)
            return false;
        offset += static_cast<std::streamoff>(chunk - encryptedStream.size());
    }
}

} // namespace

void requireContainer(const std::filesystem::path &input)
{
    if (!File::isReadable(input))
        throw ConversionError::unreadableInput(input);
    std::ifstream file(input, std::ios::binary);
    const std::string start = readAt(file, 0, compoundStart.size());
    if (start == compoundStart && holdsEncryptedStream(file))
        throw ConversionError::passwordProtected(input);

    std::error_code failure;
    const auto size = static_cast<std::size_t>(std::filesystem::file_size(input, failure));
    if (failure || !start.starts_with(zipStart))
        throw ConversionError::unreadableInput(input);
    const std::size_t endSize = std::min(size, longestEnd);
    if (readAt(file, static_cast<std::streamoff>(size - endSize), endSize).rfind(zipEnd) == std::string::npos)
        throw ConversionError::unreadableInput(input);
}

} // namespace nolfa::WordFile
