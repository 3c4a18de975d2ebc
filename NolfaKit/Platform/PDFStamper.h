#pragma once

#include "Platform/ByteSink.h"
#include "Platform/Geometry.h"
#include "Platform/TypesetLine.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <stop_token>

namespace nolfa {

/// Where a line stands on a page: once, or in rows and columns. In points from the lower left corner of the page as a
/// reader sees it.
struct StampPlaces {
    Transform first; ///< from the line's own space, whose unit is the font's size, to the first place
    int columns = 1;
    int rows = 1;
    double stepX = 0; ///< from one column to the next
    double stepY = 0; ///< from one row to the next, upwards
    bool isClipped = false; ///< to the page

    bool operator==(const StampPlaces &) const = default;
};

/// Copies pages of a PDF into a new one, where each becomes content that a line of text can be drawn over. Neither
/// drawn nor interpreted: what a page shows goes over as it is stored, and what isn't content (annotations, links,
/// form fields) stays behind. The copy is never encrypted. Not thread-safe; several threads have one each.
class PDFStamper {
public:
    /// Absent for what isn't a readable PDF. A document that is damaged but can be repaired opens.
    [[nodiscard]] static std::optional<PDFStamper> open(const std::filesystem::path &file);

    PDFStamper(PDFStamper &&other) noexcept;
    PDFStamper &operator=(PDFStamper &&other) noexcept;
    ~PDFStamper();

    /// An encrypted document that no empty password opens. Nothing else may be asked of it.
    [[nodiscard]] bool isLocked() const noexcept;

    [[nodiscard]] std::size_t pageCount() const noexcept;

    /// A page's media box as a reader sees it, turned if the page is, in points. Absent for a page that can't be got.
    [[nodiscard]] std::optional<Size> pageSize(std::size_t page) const;

    /// Starts the new file.
    /// @param sink  takes its bytes, and must stay until finish(); what it throws passes through
    /// @param line  what pages may be stamped with
    /// @throws PlatformError when the line can't be taken over
    void begin(ByteSink &sink, const std::optional<TypesetLine> &line);

    /// Adds a copy of a page. One that can't be got is left out.
    /// @param places  of the line over it; none leaves the page as it is
    /// @throws CancellationError after a stop
    void add(std::size_t page, const std::optional<StampPlaces> &places, const std::stop_token &stop);

    /// Completes the new file.
    /// @throws CancellationError after a stop
    void finish(const std::stop_token &stop);

private:
    struct Implementation;

    explicit PDFStamper(std::unique_ptr<Implementation> implementation);

    std::unique_ptr<Implementation> m_implementation;
};

} // namespace nolfa
