#pragma once

#include <exception>
#include <string>

namespace nolfa {

/// What the user reads of a failure. Thread-safe.
namespace ErrorMessage {

/// A sentence in the language in force, for whatever left the engine.
[[nodiscard]] std::string sentence(const std::exception &error);

} // namespace ErrorMessage

} // namespace nolfa
