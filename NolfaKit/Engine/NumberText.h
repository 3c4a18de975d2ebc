#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace nolfa {

/// Numbers in the text of documents, always by the rules of the C locale, whatever the process's locale is.
/// Thread-safe.
namespace NumberText {

/// Base 10 with an optional sign, the whole text being digits. Absent for anything else, overflow included.
[[nodiscard]] std::optional<std::int64_t> integer(std::string_view text);

/// The whole grammar of strtod over the whole text, hexadecimal forms, "inf" and "nan" included, but without leading
/// whitespace. Absent for anything else.
[[nodiscard]] std::optional<double> number(std::string_view text);

} // namespace NumberText

} // namespace nolfa
