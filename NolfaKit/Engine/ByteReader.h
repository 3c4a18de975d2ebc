#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace nolfa {

/// Numbers in binary files, from anywhere in the bytes; what lies beyond the end is 0. A value that borrows its bytes.
class ByteReader {
public:
    enum class Order { bigEndian, littleEndian };

    explicit ByteReader(std::string_view bytes, Order order = Order::bigEndian)
        : m_bytes(bytes)
        , m_order(order)
    {
    }

    [[nodiscard]] std::uint8_t byte(std::size_t at) const
    {
        return at < m_bytes.size() ? static_cast<std::uint8_t>(m_bytes[at]) : std::uint8_t{0};
    }
    [[nodiscard]] std::uint16_t word(std::size_t at) const { return static_cast<std::uint16_t>(number(at, 2)); }
    [[nodiscard]] std::uint32_t doubleWord(std::size_t at) const { return number(at, 4); }

private:
    [[nodiscard]] std::uint32_t number(std::size_t at, std::size_t size) const
    {
        constexpr unsigned int bitsPerByte = 8;
        std::uint32_t result = 0;
        for (std::size_t index = 0; index < size; ++index)
            result = result << bitsPerByte | byte(at + (m_order == Order::bigEndian ? index : size - 1 - index));
        return result;
    }

    std::string_view m_bytes;
    Order m_order;
};

} // namespace nolfa
