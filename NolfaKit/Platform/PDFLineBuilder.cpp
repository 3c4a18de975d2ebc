#include "Platform/PDFLineBuilder.h"

#include "Platform/Unicode.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

namespace nolfa {

namespace {

// Parts of the font size, found by comparing the words of long books with those of other readers.
constexpr double baselineTolerance = 0.25;
constexpr double shiftTolerance = 0.6;
constexpr double shiftReach = 1.0;
constexpr double backTolerance = 0.5;
constexpr double blankWidth = 0.15;
constexpr double samePlace = 0.12;

/// The cosine of the angle up to which two directions are one.
constexpr double sameDirection = 0.995;

/// How many characters back one that is drawn again is looked for.
constexpr std::size_t searchBack = 1024;

bool isBlank(char32_t codePoint)
{
    return codePoint == ' ' || codePoint == '\t' || codePoint == 0xA0 || codePoint == 0x1680
        || (codePoint >= 0x2000 && codePoint <= 0x200A) || codePoint == 0x202F || codePoint == 0x205F
        || codePoint == 0x3000 || (codePoint >= 0x0A && codePoint <= 0x0D);
}

bool isControl(char32_t codePoint)
{
    return codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0) || codePoint == 0xFEFF;
}

bool isRightToLeft(char32_t codePoint)
{
    return (codePoint >= 0x0590 && codePoint <= 0x08FF) || (codePoint >= 0xFB1D && codePoint <= 0xFDFF)
        || (codePoint >= 0xFE70 && codePoint <= 0xFEFC);
}

/// The letters of a ligature that has a code point of its own.
std::string_view lettersOf(char32_t codePoint)
{
    switch (codePoint) {
    case 0xFB00:
        return "ff";
    case 0xFB01:
        return "fi";
    case 0xFB02:
        return "fl";
    case 0xFB03:
        return "ffi";
    case 0xFB04:
        return "ffl";
    case 0xFB05:
    case 0xFB06:
        return "st";
    default:
        return {};
    }
}

} // namespace

void PDFLineBuilder::add(const PDFGlyph &glyph)
{
    const double along = glyph.x * m_directionX + glyph.y * m_directionY;
    const double across = glyph.y * m_directionX - glyph.x * m_directionY;
    const bool doesContinue = m_isOpen && continues(glyph, along, across);
    const bool isWhite = isBlank(glyph.codePoint);
    m_isLastDropped = isWhite || isControl(glyph.codePoint);
    if (m_isLastDropped && doesContinue) {
        m_isBlankDue = m_isBlankDue || isWhite;
        m_start = along;
        m_end = along + glyph.advance;
    }
    if (m_isLastDropped)
        return;
    if (m_isOpen && isDrawnAgain(glyph, along, across)) {
        m_isLastDropped = true;
        return;
    }
    if (doesContinue) {
        const double em = std::max(m_em, glyph.fontSize);
        const bool isLeftward = along < m_start && isRightToLeft(glyph.codePoint);
        const double gap = isLeftward ? m_start - (along + glyph.advance) : along - m_end;
        m_isBlankDue = m_isBlankDue || gap > blankWidth * em;
    } else {
        closeLine();
        begin(glyph, across);
    }
    if (std::exchange(m_isBlankDue, false) && !m_line.text.empty())
        append(' ');
    append(glyph.codePoint);
    // Once more, since the line's direction may be new.
    m_start = glyph.x * m_directionX + glyph.y * m_directionY;
    m_end = m_start + glyph.advance;
    m_across = glyph.y * m_directionX - glyph.x * m_directionY;
    m_em = glyph.fontSize;
    m_marks.push_back({m_start, m_across, glyph.codePoint});
}

void PDFLineBuilder::addToLast(char32_t codePoint)
{
    if (!m_isLastDropped && m_isOpen && !isBlank(codePoint) && !isControl(codePoint))
        append(codePoint);
}

std::vector<PDFTextLine> PDFLineBuilder::finish()
{
    closeLine();
    m_size = 0;
    return std::exchange(m_lines, {});
}

bool PDFLineBuilder::continues(const PDFGlyph &glyph, double along, double across) const
{
    if (glyph.directionX * m_directionX + glyph.directionY * m_directionY < sameDirection)
        return false;
    const double em = std::max(m_em, glyph.fontSize);
    const double gap = along - m_end;
    const double leftwardGap = m_start - (along + glyph.advance);
    const bool isLeftward = isRightToLeft(glyph.codePoint) && std::abs(leftwardGap) < shiftReach * em;
    if (gap < -backTolerance * em && !isLeftward)
        return false;
    if (std::abs(across - m_base) <= baselineTolerance * em)
        return true;
    return gap < shiftReach * em && std::abs(across - m_across) < shiftTolerance * em;
}

bool PDFLineBuilder::isDrawnAgain(const PDFGlyph &glyph, double along, double across) const
{
    const double reach = samePlace * glyph.fontSize;
    // Nearly every character goes on where the last one ended, or begins a line elsewhere.
    if (along - m_end > -reach || std::abs(across - m_base) > std::max(reach, shiftTolerance * glyph.fontSize))
        return false;
    const auto last = m_marks.rbegin() + static_cast<std::ptrdiff_t>(std::min(m_marks.size(), searchBack));
    return std::any_of(m_marks.rbegin(), last, [&](const Mark &mark) {
        return mark.codePoint == glyph.codePoint && std::abs(mark.along - along) <= reach
            && std::abs(mark.across - across) <= reach;
    });
}

void PDFLineBuilder::begin(const PDFGlyph &glyph, double across)
{
    m_isOpen = true;
    m_isBlankDue = false;
    m_line.fontSize = glyph.fontSize;
    const bool isTurned = m_directionX != glyph.directionX || m_directionY != glyph.directionY;
    m_directionX = glyph.directionX;
    m_directionY = glyph.directionY;
    m_base = isTurned ? glyph.y * m_directionX - glyph.x * m_directionY : across;
}

void PDFLineBuilder::append(char32_t codePoint)
{
    const std::size_t before = m_line.text.size();
    if (codePoint < 0x80)
        m_line.text += static_cast<char>(codePoint);
    else if (const std::string_view letters = lettersOf(codePoint); !letters.empty())
        m_line.text += letters;
    else
        Unicode::append(m_line.text, codePoint);
    m_size += m_line.text.size() - before;
}

void PDFLineBuilder::closeLine()
{
    if (!m_line.text.empty())
        m_lines.push_back(std::exchange(m_line, {}));
    m_line = {};
    m_marks.clear();
    m_isOpen = false;
    m_isBlankDue = false;
}

} // namespace nolfa
