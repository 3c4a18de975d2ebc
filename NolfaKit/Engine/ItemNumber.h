#pragma once

#include <string>
#include <string_view>

namespace nolfa {

/// The number of an item of an HTML list as it is printed, without the full stop.
/// @param type  the list's `type`: "a", "A", "i", "I"; anything else counts in decimal
[[nodiscard]] std::string itemNumber(long number, std::string_view type);

/// Takes what numbers an item of a text off its line: digits of any script, a full stop or a bracket, and whitespace.
/// False when the line begins otherwise.
bool takeItemNumber(std::string_view &line);

} // namespace nolfa
