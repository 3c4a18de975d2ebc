#pragma once

#include <cstddef>

namespace nolfa {

/// The terminal behind standard error. Thread-safe.
namespace Terminal {

[[nodiscard]] bool isErrorTerminal();

/// In columns; 80 when the terminal doesn't say.
[[nodiscard]] std::size_t errorWidth();

} // namespace Terminal

} // namespace nolfa
