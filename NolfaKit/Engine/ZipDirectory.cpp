#include "Engine/ZipDirectory.h"

#include "Engine/ByteReader.h"
#include "Platform/File.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace nolfa::ZipDirectory {

namespace {

constexpr std::string_view endSignature = "PK\x05\x06";
constexpr std::string_view locatorSignature = "PK\x06\x07";
constexpr std::uint32_t entrySignature = 0x02014b50;
constexpr std::size_t endSize = 22;
constexpr std::size_t locatorSize = 20;
constexpr std::size_t entrySize = 46;
constexpr std::size_t longestComment = 65535;
constexpr std::size_t longestDirectory = 16U << 20U;
/// What a field holds whose number stands elsewhere (ZIP64).
constexpr std::uint32_t elsewhere = 0xFFFFFFFF;
constexpr std::uint16_t elsewhereShort = 0xFFFF;

/// The last bytes of a file, in which the end record must lie.
struct Tail {
    std::uint64_t offset = 0;
    std::string bytes;
    std::size_t end = std::string::npos; ///< where the end record begins, in the bytes
};

Tail readTail(const std::filesystem::path &archive)
{
    std::error_code failure;
    const std::uint64_t size = std::filesystem::file_size(archive, failure);
    if (failure)
        return {};
    Tail tail;
    tail.offset = size - std::min<std::uint64_t>(size, endSize + longestComment);
    tail.bytes = File::range(archive, tail.offset, endSize + longestComment);
    tail.end = tail.bytes.rfind(endSignature);
    return tail;
}

bool hasLocator(const Tail &tail)
{
    return tail.end >= locatorSize && tail.bytes.compare(tail.end - locatorSize, 4, locatorSignature) == 0;
}

ByteReader littleEndian(std::string_view bytes)
{
    return ByteReader(bytes, ByteReader::Order::littleEndian);
}

/// Adds the entry at the front, and takes it away.
/// @return false when no whole entry with sizes of its own stands there
bool addEntry(std::string_view &directory, Totals &totals)
{
    const ByteReader fields = littleEndian(directory);
    if (directory.size() < entrySize || fields.doubleWord(0) != entrySignature)
        return false;
    const std::uint32_t packed = fields.doubleWord(20);
    const std::uint32_t unpacked = fields.doubleWord(24);
    const std::size_t size = entrySize + fields.word(28) + fields.word(30) + fields.word(32);
    if (packed == elsewhere || unpacked == elsewhere || size > directory.size())
        return false;
    directory.remove_prefix(size);
    totals.packed += packed;
    totals.unpacked += unpacked;
    ++totals.entries;
    return true;
}

std::optional<Totals> sum(std::string_view directory)
{
    Totals totals;
    while (!directory.empty()) {
        if (!addEntry(directory, totals))
            return std::nullopt;
    }
    return totals;
}

} // namespace

bool hasEnd(const std::filesystem::path &archive)
{
    return readTail(archive).end != std::string::npos;
}

std::optional<Totals> totals(const std::filesystem::path &archive)
{
    const Tail tail = readTail(archive);
    if (tail.end == std::string::npos || tail.bytes.size() - tail.end < endSize || hasLocator(tail))
        return std::nullopt;
    const ByteReader end = littleEndian(std::string_view(tail.bytes).substr(tail.end));
    const std::uint16_t disk = end.word(4);
    const std::uint16_t directoryDisk = end.word(6);
    const std::uint16_t entries = end.word(10);
    const std::uint32_t size = end.doubleWord(12);
    const std::uint32_t offset = end.doubleWord(16);
    const bool isPlain = disk == 0 && directoryDisk == 0 && entries == end.word(8) && entries != elsewhereShort
        && size <= longestDirectory && std::uint64_t{offset} + size == tail.offset + tail.end;
    if (!isPlain)
        return std::nullopt;
    const std::string directory = File::range(archive, offset, size);
    const std::optional<Totals> found = sum(directory);
    if (directory.size() != size || !found || found->entries != entries)
        return std::nullopt;
    return found;
}

} // namespace nolfa::ZipDirectory
