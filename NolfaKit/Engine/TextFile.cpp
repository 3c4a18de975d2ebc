#include "Engine/TextFile.h"

#include "Engine/ConversionError.h"
#include "Platform/CancellationError.h"
#include "Platform/File.h"
#include "Platform/Unicode.h"

namespace nolfa::TextFile {

namespace {

/// Nobody's text is larger, and a sparse file may claim any size.
constexpr std::uintmax_t largest = 1ULL << 30U;

/// As Unicode::isValidUTF8(), slice by slice, so that a stop is heeded in a long text.
bool isValidUTF8(std::string_view text, const std::stop_token &stop)
{
    constexpr std::size_t slice = 1U << 23U;
    constexpr auto goesOn = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80; };
    while (text.size() > slice) {
        throwIfStopped(stop);
        std::size_t end = slice;
        while (end > 0 && goesOn(text[end]))
            --end;
        if (end == 0 || !Unicode::isValidUTF8(text.substr(0, end)))
            return false;
        text.remove_prefix(end);
    }
    return Unicode::isValidUTF8(text);
}

} // namespace

std::string read(const std::filesystem::path &url, const std::stop_token &stop)
{
    std::error_code failure;
    const std::uintmax_t size = std::filesystem::file_size(url, failure);
    if (failure || size > largest)
        throw ConversionError::unreadableInput(url);
    std::optional<std::string> bytes = File::contents(url, stop);
    if (!bytes)
        throw ConversionError::unreadableInput(url);
    if (isValidUTF8(*bytes, stop))
        return std::move(*bytes);
    if (std::optional<std::string> text = Unicode::decodedByMark(*bytes))
        return std::move(*text);
    return Unicode::decodedLatin1(*bytes);
}

} // namespace nolfa::TextFile
