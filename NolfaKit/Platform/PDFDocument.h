#pragma once

#include "Platform/Bitmap.h"
#include "Platform/Geometry.h"
#include "Platform/PDFLineBuilder.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

namespace nolfa {

/// A PDF that is open for reading. One thread at a time; several threads have an opening each.
/// What one object may take from the heap is bounded, and so is the time that a page may take.
class PDFDocument {
public:
    /// Absent for what isn't a readable PDF. A document that is damaged but can be repaired opens. Never throws for
    /// what the file says.
    [[nodiscard]] static std::optional<PDFDocument> open(const std::filesystem::path &file);

    /// Another opening of the same file, for another thread, cheaper than the first. Absent when the file is locked or
    /// no longer there. May be called from any thread while this one is in use.
    [[nodiscard]] std::optional<PDFDocument> openedAgain() const;

    PDFDocument(PDFDocument &&other) noexcept;
    PDFDocument &operator=(PDFDocument &&other) noexcept;
    ~PDFDocument();

    /// An encrypted document that no empty password opens. Nothing else may be asked of it.
    [[nodiscard]] bool isLocked() const noexcept;

    [[nodiscard]] std::size_t pageCount() const noexcept;

    /// The media box as a reader sees it, turned if the page is; in points. Empty for a damaged page.
    [[nodiscard]] Size pageSize(std::size_t page) const;

    /// The lines of a page in the page's own order, by the rule of PDFLineBuilder. Text that is invisible counts (it
    /// is what recognition left in a scan), text outside the media box, in annotations or in switched-off layers
    /// doesn't. A glyph whose character the file doesn't tell is U+FFFD.
    ///
    /// Of a damaged page, what came before the damage. A page that isn't there has no lines.
    /// @throws CancellationError after a stop; PlatformError when the page takes too long
    [[nodiscard]] std::vector<PDFTextLine> textLines(std::size_t page, const std::stop_token &stop) const;

    /// The whole media box, annotations included, in grey on white.
    /// @param scale  pixels a point; lowered for a page so large that its bitmap would be beyond reason
    /// @return absent for a page that isn't there or has no area
    /// @throws CancellationError after a stop; PlatformError when the page can't be drawn
    [[nodiscard]] std::optional<Bitmap> render(std::size_t page, double scale, const std::stop_token &stop) const;

private:
    struct Implementation;

    explicit PDFDocument(std::unique_ptr<Implementation> implementation);

    std::unique_ptr<Implementation> m_implementation;
};

} // namespace nolfa
