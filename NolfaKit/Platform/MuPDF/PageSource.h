#pragma once

#include "Platform/Geometry.h"
#include "Platform/MuPDF/ObjectCopier.h"

#include <map>
#include <optional>
#include <string>

namespace nolfa::mupdf {

/// What of a page decides how it stands before a reader.
struct PageFrame {
    Rectangle box; ///< the media box, in units of the page
    int rotation = 0; ///< 0, 90, 180 or 270 degrees, clockwise
    double unit = 1; ///< points

    /// As a reader sees it, in units of the page.
    [[nodiscard]] Size uprightSize() const noexcept;

    /// From the page's own space to the upright page, whose lower left corner is the origin.
    [[nodiscard]] Transform upright() const noexcept;
};

/// Brings pages of a PDF over as form objects (ISO 32000-1, 8.10). Not thread-safe.
class PageSource {
public:
    /// Both must outlive this.
    PageSource(const Document &source, PDFWriter &target)
        : m_source(source)
        , m_target(target)
        , m_copier(source, target)
    {
    }

    /// Absent for a page that can't be got.
    [[nodiscard]] static std::optional<PageFrame> frame(const Document &source, std::size_t page);

    struct Form {
        int number = 0; ///< 0: the page shows nothing
        std::string group; ///< of the page's transparency, as an entry of a page; may be empty
    };

    /// Writes the form of a page, and all that it shows. A page that shows just what one before it showed gets the
    /// same form.
    /// @param entries  further ones of the form
    /// @throws CancellationError after a stop
    [[nodiscard]] Form copy(
        std::size_t page, const Rectangle &box, const std::string &entries, const std::stop_token &stop);

    /// The entries of the catalogue that decide what pages look like: layers, and the meaning of inks.
    /// @throws CancellationError after a stop
    [[nodiscard]] std::string catalogEntries(const std::stop_token &stop);

private:
    struct Content;

    [[nodiscard]] Content content(std::size_t page, const std::string &entries);
    [[nodiscard]] std::string joined(pdf_obj *contents) const;

    const Document &m_source;
    PDFWriter &m_target;
    ObjectCopier m_copier;
    std::map<std::string, int> m_forms; ///< by what tells them apart
};

} // namespace nolfa::mupdf
