#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace nolfa {

/// Bytes written as an address, by RFC 2397 and RFC 4648.
namespace DataURI {

/// "data:;base64," and the bytes.
[[nodiscard]] std::string encoded(std::string_view bytes);

/// The bytes of a data: address, in base64 or percent-encoded. Absent for any other address.
[[nodiscard]] std::optional<std::string> decoded(std::string_view address);

/// A text with its %XX resolved; a percent sign that begins no such thing stands for itself.
[[nodiscard]] std::string percentDecoded(std::string_view text);

} // namespace DataURI

} // namespace nolfa
