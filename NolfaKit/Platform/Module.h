#pragma once

#include <string>

namespace nolfa {

/// Parts of the engine that bring many foreign libraries along: loaded when they are first used, and never unloaded.
/// Whoever doesn't need them doesn't pay for their start. Thread-safe.
namespace Module {

/// What a module of the engine shows under a C name.
/// @param module  its name, as in "NolfaKitQt"; the file lies beside the engine's own
/// @throws PlatformError when the module isn't there, or shows no such thing
[[nodiscard]] void *entry(const std::string &module, const std::string &name);

} // namespace Module

} // namespace nolfa
