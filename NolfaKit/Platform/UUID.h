#pragma once

#include <string>

namespace nolfa {

/// A new random identifier (RFC 9562, version 4) in upper case: "0E984725-C51C-4BF4-9960-E1C80E27ABA0".
/// Thread-safe.
/// @throws PlatformError when the system has no random source.
[[nodiscard]] std::string newUUID();

} // namespace nolfa
