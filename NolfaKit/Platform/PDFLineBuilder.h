#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace nolfa {

/// One line of a page's text.
struct PDFTextLine {
    std::string text; ///< UTF-8
    double fontSize = 0; ///< of its first character, in points; 0 when unknown

    bool operator==(const PDFTextLine &) const = default;
};

/// One character as a page draws it. Lengths are in points, in one space for the whole page whose y grows downwards.
struct PDFGlyph {
    char32_t codePoint = 0;
    double x = 0; ///< of its origin, on the baseline
    double y = 0;
    double directionX = 1; ///< where the writing goes; of length 1
    double directionY = 0;
    double advance = 0; ///< how far the pen moves
    double fontSize = 0;
};

/// Puts the characters of a page, in the order in which the page draws them, together to what a reader sees as lines.
///
/// A character continues the line
/// - when it stands on the line's baseline, to a quarter of the font size, and doesn't lie more than half of it back:
///   so the cells of a table's row are one line whatever lies between them, while columns that a page draws one after
///   the other stay columns;
/// - or when it follows the one before it closely and is raised or lowered by less than 0.6 of the font size: an
///   index, an exponent;
/// - or, right-to-left scripts, when it stands just to the left of the one before it.
///
/// A gap of more than 0.15 of the font size is one blank, and so is any run of white space that the page itself has.
/// A character drawn again at its own place (bold or a shadow, by hand) counts once. Ligatures are spelled out.
/// Not thread-safe.
class PDFLineBuilder {
public:
    void add(const PDFGlyph &glyph);

    /// A further character of the glyph that was added last, such as the "i" of a ligature.
    void addToLast(char32_t codePoint);

    /// Bytes of text gathered so far.
    [[nodiscard]] std::size_t size() const noexcept { return m_size; }

    /// The lines in the page's own order, without blanks around them, without empty ones.
    [[nodiscard]] std::vector<PDFTextLine> finish();

private:
    struct Mark {
        double along;
        double across;
        char32_t codePoint;
    };

    [[nodiscard]] bool continues(const PDFGlyph &glyph, double along, double across) const;
    [[nodiscard]] bool isDrawnAgain(const PDFGlyph &glyph, double along, double across) const;
    void begin(const PDFGlyph &glyph, double across);
    void append(char32_t codePoint);
    void closeLine();

    std::vector<PDFTextLine> m_lines;
    PDFTextLine m_line;
    std::vector<Mark> m_marks; ///< of the open line
    std::size_t m_size = 0;
    bool m_isOpen = false;
    bool m_isBlankDue = false;
    bool m_isLastDropped = false;
    // Of the open line: its direction and baseline.
    double m_directionX = 1;
    double m_directionY = 0;
    double m_base = 0;
    // Of the character before: where it began and ended along the line, its own baseline, its size.
    double m_start = 0;
    double m_end = 0;
    double m_across = 0;
    double m_em = 0;
};

} // namespace nolfa
