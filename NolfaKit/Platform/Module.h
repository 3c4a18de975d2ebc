#pragma once

#include <string>

namespace nolfa {

/// Parts of the engine that bring many foreign libraries along: loaded when they are first used, and never unloaded.
/// Whoever doesn't need them doesn't pay for their start. Thread-safe.
namespace Module {

/// A function that a module of the engine exports under a C name.
/// @param module  its name, as in "NolfaPictures"; the file lies beside the engine's own
/// @throws PlatformError when the module or the function isn't there
[[nodiscard]] void *entry(const std::string &module, const std::string &function);

} // namespace Module

} // namespace nolfa
