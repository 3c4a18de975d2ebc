#pragma once

#include <stdexcept>

namespace nolfa {

/// A failure of the operating system or of a library, in its own words (English, no sentence for the user).
/// What it means to the user is the engine's to say.
class PlatformError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace nolfa
