#pragma once

#include "Platform/PictureSource.h"

namespace nolfa::PictureDecoder {

/// As PictureSource::open, but the caller deletes it. Needs no application object of Qt. Thread-safe.
/// @return null when it is no picture
[[nodiscard]] PictureSource *open(std::string_view bytes, const std::stop_token &stop);

} // namespace nolfa::PictureDecoder
