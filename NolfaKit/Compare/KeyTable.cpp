#include "Compare/KeyTable.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <random>

namespace nolfa {

namespace {

constexpr std::size_t fewestSlots = 64;

__extension__ using Wide = unsigned __int128;

/// Both halves of a product, mixed: every bit of each factor reaches every bit of the result.
std::uint64_t mixed(std::uint64_t a, std::uint64_t b)
{
    const Wide product = static_cast<Wide>(a) * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
}

/// Odd, and of this process alone.
std::array<std::uint64_t, 2> makeSeeds()
{
    std::random_device source;
    std::array<std::uint64_t, 2> seeds{};
    for (std::uint64_t &seed : seeds)
        seed = (std::uint64_t{source()} << 32U | source()) | 1U;
    return seeds;
}

std::uint64_t loaded(const char *bytes, std::size_t count)
{
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, count);
    return word;
}

std::uint32_t hashOf(std::string_view text)
{
    static const std::array<std::uint64_t, 2> seeds = makeSeeds();
    constexpr std::size_t stride = sizeof(std::uint64_t);
    std::uint64_t hash = seeds[0] ^ text.size();
    const char *bytes = text.data();
    std::size_t left = text.size();
    for (; left > stride; left -= stride, bytes += stride)
        hash = mixed(hash ^ loaded(bytes, stride), seeds[1]);
    hash = mixed(hash ^ loaded(bytes, left), seeds[1]);
    return static_cast<std::uint32_t>(hash ^ hash >> 32U);
}

} // namespace

KeyTable::KeyTable()
    : m_slots(fewestSlots)
{
}

std::uint32_t KeyTable::number(std::string_view key)
{
    if (m_keys.size() * 2 >= m_slots.size())
        grow();
    const std::uint32_t hash = hashOf(key);
    const std::size_t mask = m_slots.size() - 1;
    std::size_t slot = hash & mask;
    for (; m_slots[slot] != 0; slot = (slot + 1) & mask) {
        const Key &known = m_keys[m_slots[slot] - 1];
        if (known.hash == hash && std::string_view(known.data, known.size) == key)
            return m_slots[slot] - 1;
    }
    m_keys.push_back({key.data(), static_cast<std::uint32_t>(key.size()), hash});
    m_slots[slot] = static_cast<std::uint32_t>(m_keys.size());
    return m_slots[slot] - 1;
}

void KeyTable::clear()
{
    const std::size_t slots = std::max(fewestSlots, std::bit_ceil(2 * m_keys.size()));
    m_keys.clear();
    // Many slots for a few keys would be emptied each time.
    if (m_slots.size() > 4 * slots)
        m_slots = std::vector<std::uint32_t>(slots);
    else
        std::ranges::fill(m_slots, 0);
}

void KeyTable::grow()
{
    m_slots.assign(m_slots.size() * 2, 0);
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t i = 0; i < m_keys.size(); ++i) {
        std::size_t slot = m_keys[i].hash & mask;
        while (m_slots[slot] != 0)
            slot = (slot + 1) & mask;
        m_slots[slot] = static_cast<std::uint32_t>(i + 1);
    }
}

} // namespace nolfa
