#pragma once

#include "Engine/DocumentFormat.h"

#include <compare>
#include <cstddef>
#include <functional>

namespace nolfa {

/// From which format to which.
struct ConversionPair {
    DocumentFormat source;
    DocumentFormat target;

    auto operator<=>(const ConversionPair &) const = default;
};

} // namespace nolfa

template <> struct std::hash<nolfa::ConversionPair> {
    std::size_t operator()(const nolfa::ConversionPair &pair) const noexcept
    {
        return static_cast<std::size_t>(pair.source) * nolfa::DocumentFormats::allCases.size()
            + static_cast<std::size_t>(pair.target);
    }
};
