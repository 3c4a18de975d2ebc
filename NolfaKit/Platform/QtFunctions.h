#pragma once

#include "Platform/HTMLPrinter.h"
#include "Platform/PictureSource.h"

namespace nolfa {

/// What Qt does for the engine. It lies in a library of its own, which is loaded at the first use: most runs of the
/// command line don't need it, and loading costs more than all the rest of their start.
struct QtFunctions {
    void (*printHTML)(const HTMLPrinter::Job &, const std::stop_token &);
    PictureSource *(*openPicture)(std::string_view bytes, const std::stop_token &);

    /// Loads the library once. Thread-safe.
    /// @throws PlatformError when it can't be loaded
    [[nodiscard]] static const QtFunctions &loaded();
};

} // namespace nolfa
