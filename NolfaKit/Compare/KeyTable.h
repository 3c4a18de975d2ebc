#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace nolfa {

/// Numbers texts, so that equal ones can be found and compared as numbers: the first text is 0, each new one the next.
/// Which texts collide inside is different in each process, so that no document can be made to be slow.
/// Not thread-safe.
class KeyTable {
public:
    KeyTable();

    /// The number of a text.
    /// @param key  must stay where it is until clear()
    [[nodiscard]] std::uint32_t number(std::string_view key);

    /// How many different texts there are.
    [[nodiscard]] std::size_t size() const noexcept { return m_keys.size(); }

    /// Forgets all texts. Costs no more than what was put in.
    void clear();

private:
    struct Key {
        const char *data;
        std::uint32_t size;
        std::uint32_t hash;
    };

    void grow();

    std::vector<Key> m_keys;
    /// A power of two of them: one more than the number of the key there, or 0.
    std::vector<std::uint32_t> m_slots;
};

} // namespace nolfa
