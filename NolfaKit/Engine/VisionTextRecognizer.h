#pragma once

#include "Engine/TextRecognizing.h"
#include "Platform/TextLineReader.h"

namespace nolfa {

/// The recogniser that reads for users: printed text, a fragment a line.
class VisionTextRecognizer : public TextRecognizing {
public:
    /// Lines that the engine is too unsure of are left out.
    [[nodiscard]] std::vector<RecognizedFragment> recognize(
        const Bitmap &image, const std::vector<std::string> &languages, std::stop_token stop) const override;

    /// The lines of at least 0.3 confidence, unchanged and in their order.
    [[nodiscard]] static std::vector<RecognizedFragment> fragments(std::vector<RecognizedLine> lines);
};

} // namespace nolfa
