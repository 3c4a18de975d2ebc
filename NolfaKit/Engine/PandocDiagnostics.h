#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace nolfa {

/// What pandoc's failures mean. Thread-safe.
namespace PandocDiagnostics {

/// @param errorText  pandoc's standard error, UTF-8
/// @return one sentence for the user, in the language in force where it is ours, else pandoc's first two lines
[[nodiscard]] std::string summarize(std::string_view errorText, std::int32_t status);

} // namespace PandocDiagnostics

} // namespace nolfa
