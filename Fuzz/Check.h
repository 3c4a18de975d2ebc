#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// An invariant that must hold for every input.
inline void check(bool holds)
{
    if (!holds)
        std::abort();
}

inline std::string_view textOf(const std::uint8_t *data, std::size_t size)
{
    return {reinterpret_cast<const char *>(data), size};
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);
