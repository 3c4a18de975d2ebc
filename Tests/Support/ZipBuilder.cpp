#include "Support/ZipBuilder.h"

#include <fstream>

namespace nolfa::testing {

namespace {

void appendLittle(std::string &bytes, std::uint64_t number, unsigned size)
{
    for (unsigned byte = 0; byte < size; ++byte)
        bytes += static_cast<char>(number >> 8U * byte & 0xFFU);
}

constexpr std::uint32_t regularFile = 0100644U;
constexpr std::uint32_t symbolicLink = 0120777U;

} // namespace

std::uint32_t crc32(std::string_view bytes)
{
    std::uint32_t value = 0xFFFFFFFFU;
    for (const char byte : bytes) {
        value ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            value = value >> 1U ^ (0xEDB88320U & (0U - (value & 1U)));
    }
    return ~value;
}

ZipBuilder &ZipBuilder::add(std::string_view name, std::string_view content)
{
    return add(name, content, regularFile, content.size());
}

ZipBuilder &ZipBuilder::addLink(std::string_view name, std::string_view target)
{
    return add(name, target, symbolicLink, target.size());
}

ZipBuilder &ZipBuilder::addDeflated(
    std::string_view name, std::string_view deflated, std::uint32_t crc, std::uint32_t claimedSize)
{
    m_method = 8;
    m_crc = crc;
    add(name, deflated, regularFile, claimedSize);
    m_method = 0;
    return *this;
}

ZipBuilder &ZipBuilder::encrypted()
{
    m_flags = 1;
    return *this;
}

ZipBuilder &ZipBuilder::add(std::string_view name, std::string_view content, std::uint32_t mode, std::size_t size)
{
    // Version 2.0, made on Unix; no date.
    std::string common;
    appendLittle(common, 20, 2);
    appendLittle(common, m_flags, 2);
    appendLittle(common, m_method, 2);
    appendLittle(common, 0x21U << 16U, 4);
    appendLittle(common, m_method == 0 ? crc32(content) : m_crc, 4);
    appendLittle(common, content.size(), 4);
    appendLittle(common, size, 4);
    appendLittle(common, name.size(), 2);
    appendLittle(common, 0, 2);

    m_directory += std::string("PK\x01\x02\x14\x03", 6) + common;
    appendLittle(m_directory, 0, 6);
    appendLittle(m_directory, static_cast<std::uint64_t>(mode) << 16U, 4);
    appendLittle(m_directory, m_files.size(), 4);
    m_directory += name;
    m_files += "PK\x03\x04" + common;
    m_files += name;
    m_files += content;
    ++m_count;
    return *this;
}

std::string ZipBuilder::bytes() const
{
    std::string all = m_files + m_directory + "PK\x05\x06";
    appendLittle(all, 0, 4);
    appendLittle(all, m_count, 2);
    appendLittle(all, m_count, 2);
    appendLittle(all, m_directory.size(), 4);
    appendLittle(all, m_files.size(), 4);
    appendLittle(all, 0, 2);
    return all;
}

std::filesystem::path ZipBuilder::write(const std::filesystem::path &file) const
{
    std::ofstream(file, std::ios::binary) << bytes();
    return file;
}

} // namespace nolfa::testing
