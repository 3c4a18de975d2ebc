#include "Engine/VisionTextRecognizer.h"

#include "Platform/TextRecognitionEngine.h"

namespace nolfa {

std::vector<RecognizedFragment> VisionTextRecognizer::recognize(
    const Bitmap &image, const std::vector<std::string> &languages, std::stop_token stop) const
{
    return fragments(TextRecognitionEngine::read(image, languages, std::nullopt, stop));
}

std::vector<RecognizedFragment> VisionTextRecognizer::fragments(std::vector<RecognizedLine> lines)
{
    constexpr float leastConfidence = 0.3F;
    std::vector<RecognizedFragment> result;
    for (RecognizedLine &line : lines) {
        if (line.confidence >= leastConfidence)
            result.push_back({std::move(line.text), line.boundingBox});
    }
    return result;
}

} // namespace nolfa
