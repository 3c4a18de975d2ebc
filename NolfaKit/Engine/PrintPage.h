#pragma once

#include <string>
#include <string_view>

namespace nolfa {

/// A complete HTML document around the inside of a body, in the faces and colours of our printed pages.
[[nodiscard]] std::string printPage(std::string_view body);

} // namespace nolfa
