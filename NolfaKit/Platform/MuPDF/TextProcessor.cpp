#include "Platform/MuPDF/TextProcessor.h"

#include "Platform/MuPDF/Guard.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace nolfa::mupdf {

namespace {

/// A page that saves its state more often than this is damaged or worse.
constexpr std::size_t mostStates = 4096;

constexpr char32_t unknownCharacter = 0xFFFD;

fz_point applied(fz_matrix matrix, float x, float y)
{
    return fz_transform_point_xy(x, y, matrix);
}

} // namespace

struct TextProcessor::Course {
    fz_matrix toPage; ///< text space to page space, but for the place
    double directionX;
    double directionY;
    double unit; ///< points that one unit along the writing takes
    double fontSize;
    bool isVertical;
    bool isShown;
};

TextProcessor::TextProcessor(pdf_document *document, fz_cookie *cookie, Limits limits) noexcept
    : m_limits(limits)
    , m_document(document)
    , m_cookie(cookie)
{
}

void TextProcessor::run(
    fz_context *context, pdf_obj *contents, pdf_obj *resources, fz_matrix matrix, fz_rect bounds) noexcept
{
    m_bounds = bounds;
    m_states.assign(1, TextState{matrix});
    m_processor = static_cast<Processor *>(pdf_new_processor(context, static_cast<int>(sizeof(Processor))));
    m_processor->self = this;
    m_processor->base.usage = "View";
    connect(m_processor->base);
    // The header names the two objects the other way round.
    pdf_process_contents(context, &m_processor->base, m_document, resources, contents, m_cookie);
}

void TextProcessor::release(fz_context *context) noexcept
{
    for (pdf_font_desc *font : m_fonts)
        pdf_drop_font(context, font);
    m_fonts.clear();
    if (m_processor != nullptr)
        pdf_drop_processor(context, &m_processor->base);
    m_processor = nullptr;
}

TextProcessor &TextProcessor::of(pdf_processor *processor) noexcept
{
    // The interpreter hands back the first member of what pdf_new_processor() made.
    return *reinterpret_cast<Processor *>(processor)->self;
}

void TextProcessor::connect(pdf_processor &base) noexcept
{
    connectState(base);
    connectTextState(base);
    connectPlacing(base);
    connectShowing(base);
}

void TextProcessor::connectState(pdf_processor &base) noexcept
{
    base.op_q = [](fz_context *, pdf_processor *processor) {
        TextProcessor &self = of(processor);
        if (self.m_states.size() < mostStates)
            self.m_states.push_back(self.state());
        else
            ++self.m_unsavedStates;
    };
    base.op_Q = [](fz_context *, pdf_processor *processor) {
        TextProcessor &self = of(processor);
        if (self.m_unsavedStates > 0)
            --self.m_unsavedStates;
        else if (self.m_states.size() > self.m_floor)
            self.m_states.pop_back();
    };
    base.op_cm = [](fz_context *, pdf_processor *processor, float a, float b, float c, float d, float e, float f) {
        TextState &state = of(processor).state();
        state.matrix = fz_concat(fz_make_matrix(a, b, c, d, e, f), state.matrix);
    };
    base.op_Do_form = [](fz_context *context, pdf_processor *processor, const char *, pdf_obj *form,
                          pdf_obj *resources) { of(processor).drawForm(context, processor, form, resources); };
}

void TextProcessor::connectTextState(pdf_processor &base) noexcept
{
    base.op_Tc
        = [](fz_context *, pdf_processor *processor, float space) { of(processor).state().characterSpace = space; };
    base.op_Tw = [](fz_context *, pdf_processor *processor, float space) { of(processor).state().wordSpace = space; };
    base.op_Tz
        = [](fz_context *, pdf_processor *processor, float percent) { of(processor).state().scale = percent / 100; };
    base.op_TL = [](fz_context *, pdf_processor *processor, float leading) { of(processor).state().leading = leading; };
    base.op_Ts = [](fz_context *, pdf_processor *processor, float rise) { of(processor).state().rise = rise; };
    base.op_Tf = [](fz_context *context, pdf_processor *processor, const char *, pdf_font_desc *font, float size) {
        of(processor).setFont(context, font, size);
    };
}

void TextProcessor::connectPlacing(pdf_processor &base) noexcept
{
    base.op_BT = [](fz_context *, pdf_processor *processor) {
        of(processor).m_text = fz_identity;
        of(processor).m_textLine = fz_identity;
    };
    base.op_Td = [](fz_context *, pdf_processor *processor, float x, float y) { of(processor).moveLine(x, y); };
    base.op_TD = [](fz_context *, pdf_processor *processor, float x, float y) {
        of(processor).state().leading = -y;
        of(processor).moveLine(x, y);
    };
    base.op_Tm = [](fz_context *, pdf_processor *processor, float a, float b, float c, float d, float e, float f) {
        of(processor).m_text = fz_make_matrix(a, b, c, d, e, f);
        of(processor).m_textLine = of(processor).m_text;
    };
    base.op_Tstar
        = [](fz_context *, pdf_processor *processor) { of(processor).moveLine(0, -of(processor).state().leading); };
}

void TextProcessor::connectShowing(pdf_processor &base) noexcept
{
    base.op_TJ = [](fz_context *context, pdf_processor *processor, pdf_obj *array) {
        of(processor).showArray(context, processor, array);
    };
    base.op_Tj = [](fz_context *context, pdf_processor *processor, char *text, size_t length) {
        of(processor).show(context, processor, text, length);
    };
    base.op_squote = [](fz_context *context, pdf_processor *processor, char *text, size_t length) {
        of(processor).moveLine(0, -of(processor).state().leading);
        of(processor).show(context, processor, text, length);
    };
    base.op_dquote
        = [](fz_context *context, pdf_processor *processor, float word, float character, char *text, size_t length) {
              TextState &state = of(processor).state();
              state.wordSpace = word;
              state.characterSpace = character;
              of(processor).moveLine(0, -state.leading);
              of(processor).show(context, processor, text, length);
          };
}

void TextProcessor::drawForm(
    fz_context *context, pdf_processor *processor, pdf_obj *form, pdf_obj *pageResources) noexcept
{
    const int number = pdf_to_num(context, form);
    const bool isInItself = std::find(m_openForms.begin(), m_openForms.end(), number) != m_openForms.end();
    if (isInItself || m_openForms.size() >= m_limits.depth || ++m_forms > m_limits.forms)
        return;
    // What surrounds the form comes back even when the form fails: the interpreter goes on behind it.
    const std::size_t states = m_states.size();
    const std::size_t unsavedStates = std::exchange(m_unsavedStates, 0);
    const std::size_t floor = std::exchange(m_floor, states + 1);
    const fz_matrix text = m_text;
    const fz_matrix textLine = m_textLine;
    struct Content {
        TextProcessor *self;
        pdf_processor *processor;
        pdf_obj *form;
        pdf_obj *resources;
    } content{this, processor, form, pageResources};
    m_openForms.push_back(number);
    m_states.push_back(state());
    std::array<char, 256> message{};
    const int code = nolfa_mupdf_guard(
        context,
        [](fz_context *inner, void *argument) {
            const Content &of = *static_cast<Content *>(argument);
            TextState &state = of.self->state();
            state.matrix = fz_concat(pdf_xobject_matrix(inner, of.form), state.matrix);
            pdf_obj *own = pdf_xobject_resources(inner, of.form);
            pdf_process_contents(inner, of.processor, of.self->m_document, own != nullptr ? own : of.resources, of.form,
                of.self->m_cookie);
        },
        &content, message.data(), message.size());
    m_openForms.pop_back();
    m_states.resize(states);
    m_unsavedStates = unsavedStates;
    m_floor = floor;
    m_text = text;
    m_textLine = textLine;
    if (code != FZ_ERROR_NONE)
        fz_throw(context, code, "%s", message.data());
}

void TextProcessor::setFont(fz_context *context, pdf_font_desc *font, float size) noexcept
{
    // States share fonts, so that saving a state is a plain copy.
    if (font != nullptr && std::find(m_fonts.begin(), m_fonts.end(), font) == m_fonts.end())
        m_fonts.push_back(pdf_keep_font(context, font));
    state().font = font;
    state().size = size;
}

void TextProcessor::moveLine(float x, float y) noexcept
{
    m_textLine = fz_pre_translate(m_textLine, x, y);
    m_text = m_textLine;
}

void TextProcessor::showArray(fz_context *context, pdf_processor *processor, pdf_obj *array) noexcept
{
    const int count = pdf_array_len(context, array);
    for (int i = 0; i < count; ++i) {
        pdf_obj *const item = pdf_array_get(context, array, i);
        if (pdf_is_string(context, item) != 0) {
            std::size_t length = 0;
            const char *const text = pdf_to_string(context, item, &length);
            show(context, processor, text, length);
        } else {
            const float back = pdf_to_real(context, item) / 1000 * state().size;
            if (state().font != nullptr && state().font->wmode == 1)
                advance(0, -back);
            else
                advance(-back * state().scale, 0);
        }
    }
}

void TextProcessor::show(fz_context *context, pdf_processor *processor, const char *text, std::size_t length) noexcept
{
    const TextState &state = this->state();
    if (state.font == nullptr)
        return;
    Course course{};
    course.toPage = fz_concat(m_text, state.matrix);
    course.isVertical = state.font->wmode == 1;
    course.isShown = processor->hidden == 0;
    const fz_matrix &page = course.toPage;
    const double unitX = std::hypot(double{page.a}, double{page.b});
    const double unitY = std::hypot(double{page.c}, double{page.d});
    course.unit = course.isVertical ? unitY : unitX;
    course.fontSize = std::abs(double{state.size}) * unitY;
    if (course.unit > 0) {
        // A negative size draws against the direction of its text space.
        const double sign = !course.isVertical && state.size * state.scale < 0 ? -1 : 1;
        course.directionX = sign * (course.isVertical ? -double{page.c} : double{page.a}) / course.unit;
        course.directionY = sign * (course.isVertical ? -double{page.d} : double{page.b}) / course.unit;
    }

    // The library's decoder takes bytes that may be written to, but writes none.
    auto *at = reinterpret_cast<unsigned char *>(const_cast<char *>(text));
    auto *const end = at + length;
    while (at < end && !isFull()) {
        unsigned int code = 0;
        const int bytes = pdf_decode_cmap(state.font->encoding, at, end, &code);
        const int cid = pdf_lookup_cmap(state.font->encoding, code);
        if (cid >= 0)
            showCharacter(context, course, cid, bytes == 1 && code == ' ');
        at += std::max(bytes, 1);
    }
}

void TextProcessor::showCharacter(fz_context *context, const Course &course, int cid, bool isSpace) noexcept
{
    const TextState &state = this->state();
    pdf_font_desc *const font = state.font;
    const float space = state.characterSpace + (isSpace ? state.wordSpace : 0);
    float originX = 0;
    float moveX = 0;
    float moveY = 0;
    float width = 0;
    if (course.isVertical) {
        const pdf_vmtx metrics = pdf_lookup_vmtx(context, font, cid);
        originX = -static_cast<float>(metrics.x) / 1000 * state.size * state.scale;
        width = static_cast<float>(metrics.w) / 1000 * state.size;
        moveY = width + space;
    } else {
        const pdf_hmtx metrics = pdf_lookup_hmtx(context, font, cid);
        width = static_cast<float>(metrics.w) / 1000 * state.size * state.scale;
        moveX = width + space * state.scale;
    }

    std::array<int, PDF_MRANGE_CAP> characters; // NOLINT(cppcoreguidelines-pro-type-member-init): hot
    int count = font->to_unicode != nullptr
        ? pdf_lookup_cmap_full(font->to_unicode, static_cast<unsigned int>(cid), characters.data())
        : 0;
    if (count == 0 && static_cast<std::size_t>(cid) < font->cid_to_ucs_len && font->cid_to_ucs[cid] != 0) {
        characters[0] = font->cid_to_ucs[cid];
        count = 1;
    }

    // Where text space lies is in m_text; its directions haven't changed since the string began.
    const fz_point place = applied(fz_concat(m_text, state.matrix), originX, state.rise);
    const double advanceOnPage = std::abs(double{width}) * course.unit;
    const auto reach = static_cast<float>(std::max(course.fontSize, advanceOnPage));
    const bool isOnPage = place.x + reach > m_bounds.x0 && place.x - reach < m_bounds.x1
        && place.y + reach > m_bounds.y0 && place.y - reach < m_bounds.y1;
    if (course.isShown && course.unit > 0 && isOnPage) {
        PDFGlyph glyph;
        glyph.codePoint = count > 0 ? static_cast<char32_t>(characters[0]) : unknownCharacter;
        glyph.x = double{place.x};
        glyph.y = double{place.y};
        glyph.directionX = course.directionX;
        glyph.directionY = course.directionY;
        glyph.advance = advanceOnPage;
        // Some fonts are drawn with a size that says nothing of their glyphs.
        glyph.fontSize = std::max(course.fontSize, advanceOnPage / 2);
        m_lines.add(glyph);
        for (int i = 1; i < count; ++i)
            m_lines.addToLast(static_cast<char32_t>(characters[static_cast<std::size_t>(i)]));
    }
    advance(moveX, moveY);
}

void TextProcessor::advance(float x, float y) noexcept
{
    m_text = fz_pre_translate(m_text, x, y);
}

} // namespace nolfa::mupdf
