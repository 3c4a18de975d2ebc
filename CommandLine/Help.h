#pragma once

#include <string>

namespace nolfa::CommandLine {

/// The pages of help, in the language in force, with a line feed at the end.
namespace Help {

[[nodiscard]] std::string overview();
[[nodiscard]] std::string convert();
[[nodiscard]] std::string compare();
[[nodiscard]] std::string formats();
[[nodiscard]] std::string watermark();

} // namespace Help

} // namespace nolfa::CommandLine
