#include "Engine/TextFile.h"

#include "Engine/ConversionError.h"
#include "Platform/File.h"
#include "Platform/Unicode.h"

namespace nolfa::TextFile {

namespace {

/// Nobody's text is larger, and a sparse file may claim any size.
constexpr std::uintmax_t largest = 1ULL << 30U;

} // namespace

std::string read(const std::filesystem::path &url)
{
    std::error_code failure;
    const std::uintmax_t size = std::filesystem::file_size(url, failure);
    if (failure || size > largest)
        throw ConversionError::unreadableInput(url);
    std::optional<std::string> bytes = File::contents(url);
    if (!bytes)
        throw ConversionError::unreadableInput(url);
    if (Unicode::isValidUTF8(*bytes))
        return std::move(*bytes);
    if (std::optional<std::string> text = Unicode::decodedByMark(*bytes))
        return std::move(*text);
    return Unicode::decodedLatin1(*bytes);
}

} // namespace nolfa::TextFile
