#include "Engine/WordFile.h"

#include "Engine/ConversionError.h"
#include "Engine/ZipDirectory.h"
#include "Platform/File.h"

#include <string>
#include <string_view>

namespace nolfa::WordFile {

namespace {

using namespace std::string_view_literals;

constexpr auto zipStart = "PK\x03\x04"sv;
/// An encrypted document is a compound file with a stream of this name ([MS-OFFCRYPTO] 2.3.4).
constexpr auto compoundStart = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv;
constexpr auto encryptedStream = "E\0n\0c\0r\0y\0p\0t\0e\0d\0P\0a\0c\0k\0a\0g\0e\0"sv;

/// Finds the name wherever the compound file keeps its folder, in bounded memory.
bool holdsEncryptedStream(const std::filesystem::path &file)
{
    constexpr std::size_t chunk = 1U << 20U;
    std::uint64_t offset = 0;
    for (;;) {
        const std::string bytes = File::range(file, offset, chunk);
        if (bytes.find(encryptedStream) != std::string::npos)
            return true;
        if (bytes.size() < chunk)
            return false;
        offset += chunk - encryptedStream.size();
    }
}

} // namespace

void requireContainer(const std::filesystem::path &input)
{
    if (!File::isReadable(input))
        throw ConversionError::unreadableInput(input);
    const std::string start = File::range(input, 0, compoundStart.size());
    if (start == compoundStart && holdsEncryptedStream(input))
        throw ConversionError::passwordProtected(input);
    if (!start.starts_with(zipStart) || !ZipDirectory::hasEnd(input))
        throw ConversionError::unreadableInput(input);
}

} // namespace nolfa::WordFile
