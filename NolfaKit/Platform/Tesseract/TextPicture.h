#pragma once

#include "Platform/Bitmap.h"

#include <leptonica/allheaders.h>
#include <memory>

namespace nolfa {

struct PixDestroyer {
    void operator()(Pix *picture) const { pixDestroy(&picture); }
};
using PixHandle = std::unique_ptr<Pix, PixDestroyer>;

/// Pictures as recognition likes them best. Thread-safe.
namespace TextPicture {

/// In grey, on white where it is transparent, and scaled down when its letters are larger than they need be.
/// @throws PlatformError when there is no memory
[[nodiscard]] PixHandle make(const Bitmap &image);

} // namespace TextPicture

} // namespace nolfa
