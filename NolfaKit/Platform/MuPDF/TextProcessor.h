#pragma once

#include "Platform/PDFLineBuilder.h"

#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

#include <vector>

namespace nolfa::mupdf {

/// Reads the text that a page's content shows, and nothing else: no path is built, no picture or shading loaded.
/// Follows the text model of ISO 32000-1, 9.3 and 9.4, with the widths that the PDF itself gives: advances of the
/// embedded font programs are often zero in subsets.
///
/// Belongs to one thread. The functions that the interpreter calls own nothing with a destructor while they call it,
/// since its failures jump.
class TextProcessor {
public:
    /// What one page may cost: text beyond it is left out.
    struct Limits {
        std::size_t textBytes = 16U << 20U;
        std::size_t forms = 20'000; ///< form objects drawn, however they nest
        std::size_t depth = 24; ///< of forms within forms
    };

    TextProcessor(pdf_document *document, fz_cookie *cookie, Limits limits) noexcept;

    /// Runs the page's content; to be called within a guard. What was read before a failure stays.
    /// @param bounds  of the page in the space that @p matrix leads to; text outside is left out
    void run(fz_context *context, pdf_obj *contents, pdf_obj *resources, fz_matrix matrix, fz_rect bounds) noexcept;

    /// Releases what run() held of the library's.
    void release(fz_context *context) noexcept;

    [[nodiscard]] std::vector<PDFTextLine> finish() { return m_lines.finish(); }

private:
    struct TextState {
        fz_matrix matrix = fz_identity;
        float characterSpace = 0;
        float wordSpace = 0;
        float scale = 1;
        float leading = 0;
        float rise = 0;
        float size = 0;
        pdf_font_desc *font = nullptr;
    };

    /// The interpreter's view of this object.
    struct Processor {
        pdf_processor base;
        TextProcessor *self;
    };

    /// How one string is laid out: all that its characters share.
    struct Course;

    static TextProcessor &of(pdf_processor *processor) noexcept;
    static void connect(pdf_processor &base) noexcept;
    static void connectState(pdf_processor &base) noexcept;
    static void connectTextState(pdf_processor &base) noexcept;
    static void connectPlacing(pdf_processor &base) noexcept;
    static void connectShowing(pdf_processor &base) noexcept;

    void drawForm(fz_context *context, pdf_processor *processor, pdf_obj *form, pdf_obj *pageResources) noexcept;
    void setFont(fz_context *context, pdf_font_desc *font, float size) noexcept;
    void moveLine(float x, float y) noexcept;
    void show(fz_context *context, pdf_processor *processor, const char *text, std::size_t length) noexcept;
    void showArray(fz_context *context, pdf_processor *processor, pdf_obj *array) noexcept;
    void showCharacter(fz_context *context, const Course &course, int cid, bool isSpace) noexcept;
    void advance(float x, float y) noexcept;

    [[nodiscard]] TextState &state() noexcept { return m_states.back(); }
    [[nodiscard]] bool isFull() const noexcept { return m_lines.size() >= m_limits.textBytes; }

    PDFLineBuilder m_lines;
    Limits m_limits;
    pdf_document *m_document;
    fz_cookie *m_cookie;
    fz_rect m_bounds = fz_infinite_rect;
    Processor *m_processor = nullptr;
    std::vector<TextState> m_states;
    std::vector<pdf_font_desc *> m_fonts; ///< kept until release()
    std::vector<int> m_openForms; ///< object numbers
    std::size_t m_forms = 0;
    std::size_t m_unsavedStates = 0; ///< saved beyond what is kept
    std::size_t m_floor = 1; ///< states that the content at hand must leave
    fz_matrix m_text = fz_identity;
    fz_matrix m_textLine = fz_identity;
};

} // namespace nolfa::mupdf
