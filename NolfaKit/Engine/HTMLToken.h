#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace nolfa {

/// A piece of HTML: a tag, or what stands between two. The views lead into the text that was read.
struct HTMLToken {
    enum class Kind {
        text,
        opening, ///< also of an element that closes itself
        closing,
        other ///< a comment, a declaration
    };

    Kind kind;
    std::string_view source; ///< the whole piece as it stands
    std::string name; ///< of a tag, in lower case
    std::string_view attributes; ///< of a tag: what follows the name

    /// Takes the next piece off the front of a text that isn't empty. The content of `style` and `script` comes with
    /// the opening tag. Never fails: what is no tag is text.
    [[nodiscard]] static HTMLToken next(std::string_view &html);

    /// The value of an attribute with its entities resolved; empty for one without a value. Absent when it isn't there.
    [[nodiscard]] std::optional<std::string> attribute(std::string_view wanted) const;
};

} // namespace nolfa
