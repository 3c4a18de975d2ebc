#pragma once

#include <filesystem>
#include <string>

namespace nolfa {

/// The parts of a path's last component. A slash at the end doesn't count. Pure and thread-safe.
namespace FileName {

/// The text after the last dot, also of a name that begins with it; empty without a dot.
[[nodiscard]] std::string pathExtension(const std::filesystem::path &path);

/// The last component without its extension and that dot.
[[nodiscard]] std::string stem(const std::filesystem::path &path);

/// The last component as text for the user: UTF-8, whatever bytes the name holds.
[[nodiscard]] std::string display(const std::filesystem::path &path);

} // namespace FileName

} // namespace nolfa
