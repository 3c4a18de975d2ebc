#pragma once

#include "Platform/PDFDocument.h"

#include <mutex>

namespace nolfa {

/// Draws the pages of one PDF for recognitions that run at the same time. Thread-safe: one page at a time is drawn.
class PageImageSource {
public:
    explicit PageImageSource(PDFDocument document);

    /// @param index  zero-based
    /// @param scale  pixels a point
    /// @return absent for a page that isn't there or has no area
    /// @throws as PDFDocument::render
    [[nodiscard]] std::optional<Bitmap> image(std::size_t index, double scale, const std::stop_token &stop);

private:
    std::mutex m_lock;
    PDFDocument m_doc;
};

} // namespace nolfa
