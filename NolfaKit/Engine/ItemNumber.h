#pragma once

#include <string>
#include <string_view>

namespace nolfa {

/// The number of an item of an HTML list as it is printed, without the full stop.
/// @param type  the list's `type`: "a", "A", "i", "I"; anything else counts in decimal
[[nodiscard]] std::string itemNumber(long number, std::string_view type);

} // namespace nolfa
