#include "Engine/VisionTextRecognizer.h"

#include "Engine/InkArea.h"
#include "Platform/TextRecognitionEngine.h"

namespace nolfa {

namespace {

/// Paper around the words, in pixels: the recogniser wants some.
constexpr int rim = 40;

/// A copy of the part that matters is worth its memory when it is this much smaller.
constexpr double worthCropping = 0.75;

double areaOf(int width, int height)
{
    return static_cast<double>(width) * height;
}

} // namespace

std::vector<RecognizedFragment> VisionTextRecognizer::recognize(
    const Bitmap &image, const std::vector<std::string> &languages, std::stop_token stop) const
{
    const std::optional<PixelArea> ink = InkArea::find(image);
    if (!ink)
        return {};
    const PixelArea area = InkArea::withRim(*ink, image, rim);
    if (areaOf(area.width, area.height) > worthCropping * areaOf(image.width, image.height))
        return fragments(TextRecognitionEngine::read(image, languages, std::nullopt, stop));
    std::vector<RecognizedFragment> found
        = fragments(TextRecognitionEngine::read(InkArea::cropped(image, area), languages, std::nullopt, stop));
    for (RecognizedFragment &fragment : found)
        fragment.boundingBox = InkArea::ofWhole(fragment.boundingBox, area, image);
    return found;
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
