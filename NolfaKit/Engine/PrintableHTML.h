#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace nolfa {

/// HTML made ready for HTMLPrinter, which knows less than a browser: pictures are taken out of it, and what is nested
/// without end (hostile files do that) is flattened, since a layout goes into it by recursion.
struct PrintableHTML {
    std::string html;
    std::vector<std::string> pictures; ///< the encoded files that `picture:0`, `picture:1`, … name in the text

    /// Linear in the length of @p html, any bytes.
    [[nodiscard]] static PrintableHTML from(std::string_view html);
};

} // namespace nolfa
