#pragma once

#include "Platform/Bitmap.h"
#include "Platform/Geometry.h"

#include <chrono>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace nolfa {

/// A line of text that was read in a picture.
struct RecognizedLine {
    std::string text;
    Rectangle boundingBox; ///< in fractions of the picture, from 0 to 1
    float confidence; ///< from 0 to 1

    bool operator==(const RecognizedLine &) const = default;
};

/// An initialised recogniser for fixed languages. Serves one picture at a time, and the next one afterwards.
class TextLineReader {
public:
    using Deadline = std::optional<std::chrono::steady_clock::time_point>;

    TextLineReader() = default;
    TextLineReader(const TextLineReader &) = delete;
    TextLineReader &operator=(const TextLineReader &) = delete;
    virtual ~TextLineReader() = default;

    /// As TextRecognitionEngine::read.
    [[nodiscard]] virtual std::vector<RecognizedLine> read(
        const Bitmap &image, const Deadline &deadline, const std::stop_token &stop)
        = 0;
};

} // namespace nolfa
