#pragma once

#include <optional>
#include <string_view>

namespace nolfa {

/// The C library's own grammar of numbers.
namespace CNumber {

/// What strtod makes of the text in the C locale, whatever the process's locale is, if it takes the whole of it.
/// Thread-safe.
[[nodiscard]] std::optional<double> parse(std::string_view text);

} // namespace CNumber

} // namespace nolfa
