#pragma once

#include "Platform/Geometry.h"

#include <string>

namespace nolfa {

/// A piece of text that was read in a picture, and where it stands. Any unit serves, as long as all fragments of a
/// page share it; recognisers give fractions of the picture, from 0 to 1.
struct RecognizedFragment {
    std::string text;
    Rectangle boundingBox;

    bool operator==(const RecognizedFragment &) const = default;
};

} // namespace nolfa
