#pragma once

#include "Engine/RecognizedFragment.h"
#include "Platform/Bitmap.h"

#include <stop_token>
#include <string>
#include <vector>

namespace nolfa {

/// What converters ask of an optical character recogniser. Implementations are immutable and thread-safe.
class TextRecognizing {
public:
    TextRecognizing() = default;
    TextRecognizing(const TextRecognizing &) = delete;
    TextRecognizing &operator=(const TextRecognizing &) = delete;
    virtual ~TextRecognizing() = default;

    /// Blocks while it reads. A picture without text isn't a failure: the list is empty.
    /// @param languages  tags in order of preference, such as "fr-FR"
    /// @return fragments in no order that matters, in fractions of the picture
    /// @throws PlatformError when the recogniser fails; CancellationError after a stop
    [[nodiscard]] virtual std::vector<RecognizedFragment> recognize(
        const Bitmap &image, const std::vector<std::string> &languages, std::stop_token stop) const = 0;
};

} // namespace nolfa
