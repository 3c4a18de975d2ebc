#include "Platform/Pango/LineTypesetter.h"

#include "Platform/Pango/FontLibrary.h"
#include "Platform/PlatformError.h"

#include <algorithm>
#include <cairo-pdf.h>
#include <glib-object.h>
#include <pango/pangocairo.h>
#include <pango/pangofc-fontmap.h>

namespace nolfa::LineTypesetter {

namespace {

struct Unreference {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename Type> using Reference = std::unique_ptr<Type, Unreference>;

using Description = std::unique_ptr<PangoFontDescription, decltype(&pango_font_description_free)>;
using Options = std::unique_ptr<cairo_font_options_t, decltype(&cairo_font_options_destroy)>;
using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using Canvas = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

/// Points. A very long line is set smaller: Pango and Cairo count in 32 bits.
double sizeFor(std::size_t textBytes)
{
    constexpr double usual = 100;
    constexpr double most = 400'000;
    return std::min(usual, most / static_cast<double>(std::max<std::size_t>(textBytes, 1)));
}

/// A text of one line: a field of one line can't hold more, but a command line can.
std::string singleLine(std::string_view text)
{
    std::string result;
    const auto isEnd = [](std::string_view rest) {
        return rest.starts_with("\u0085") || rest.starts_with("\u2028") || rest.starts_with("\u2029");
    };
    for (std::size_t index = 0; index < text.size(); ++index) {
        const auto byte = static_cast<unsigned char>(text[index]);
        if (isEnd(text.substr(index))) {
            result += ' ';
            index += byte == 0xC2 ? 1 : 2;
        } else {
            result += byte < ' ' || byte == 0x7F ? ' ' : text[index];
        }
    }
    return result;
}

/// What Pango asks fontconfig for: the very file that was found, whatever other font answers to the same family.
void preferFile(FcPattern *pattern, gpointer font)
{
    FcChar8 *file = nullptr;
    if (FcPatternGetString(static_cast<FcPattern *>(font), FC_FILE, 0, &file) == FcResultMatch)
        FcPatternAddString(pattern, FC_FILE, file);
}

Reference<PangoLayout> layoutOf(const FontLibrary::Fonts &fonts, FcPattern *font, const std::string &text, double size)
{
    const Reference<PangoFontMap> map(pango_cairo_font_map_new_for_font_type(CAIRO_FONT_TYPE_FT));
    if (!map)
        throw PlatformError("no fonts through FreeType");
    pango_fc_font_map_set_config(PANGO_FC_FONT_MAP(map.get()), fonts.get());
    pango_fc_font_map_set_default_substitute(PANGO_FC_FONT_MAP(map.get()), preferFile, font, nullptr);
    constexpr double pointsPerInch = 72;
    pango_cairo_font_map_set_resolution(PANGO_CAIRO_FONT_MAP(map.get()), pointsPerInch);

    const Reference<PangoContext> context(pango_font_map_create_context(map.get()));
    // Positions as the font has them, for any size: nothing is fitted to pixels.
    const Options options(cairo_font_options_create(), cairo_font_options_destroy);
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context.get(), options.get());
    pango_context_set_round_glyph_positions(context.get(), FALSE);

    const Description description(pango_fc_font_description_from_pattern(font, FALSE), pango_font_description_free);
    pango_font_description_set_absolute_size(description.get(), size * PANGO_SCALE);
    Reference<PangoLayout> layout(pango_layout_new(context.get()));
    pango_layout_set_font_description(layout.get(), description.get());
    pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
    pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
    return layout;
}

double points(int units)
{
    return static_cast<double>(units) / PANGO_SCALE;
}

cairo_status_t append(void *target, const unsigned char *data, unsigned int length)
{
    static_cast<std::string *>(target)->append(reinterpret_cast<const char *>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

/// @param bounds  of the page around the start of the baseline, in points
std::string drawn(PangoLayoutLine *line, const Rectangle &bounds, const Colour &colour)
{
    std::string result;
    const Surface surface(
        cairo_pdf_surface_create_for_stream(append, &result, bounds.width, bounds.height), cairo_surface_destroy);
    cairo_pdf_surface_restrict_to_version(surface.get(), CAIRO_PDF_VERSION_1_5);
    const Canvas canvas(cairo_create(surface.get()), cairo_destroy);
    cairo_move_to(canvas.get(), -bounds.x, bounds.height + bounds.y);
    cairo_set_source_rgba(canvas.get(), colour.red, colour.green, colour.blue, colour.alpha);
    pango_cairo_show_layout_line(canvas.get(), line);
    cairo_show_page(canvas.get());
    const cairo_status_t drawing = cairo_status(canvas.get());
    cairo_surface_finish(surface.get());
    for (const cairo_status_t status : {drawing, cairo_surface_status(surface.get())}) {
        if (status != CAIRO_STATUS_SUCCESS)
            throw PlatformError(cairo_status_to_string(status));
    }
    return result;
}

} // namespace

TypesetLine line(std::string_view text, std::string_view postScriptName, const Colour &colour)
{
    const FontLibrary::Fonts fonts = FontLibrary::current();
    const FontLibrary::Pattern font = FontLibrary::find(fonts, postScriptName);
    if (!font)
        throw PlatformError("There is no font " + std::string(postScriptName) + ".");
    const double size = sizeFor(text.size());
    const Reference<PangoLayout> layout = layoutOf(fonts, font.get(), singleLine(text), size);
    PangoLayoutLine *const laidOut = pango_layout_get_line_readonly(layout.get(), 0);
    PangoRectangle ink{};
    PangoRectangle logical{};
    pango_layout_line_get_extents(laidOut, &ink, &logical);

    // What is painted may leave the line's own box; a tenth of the size more is for strokes that end on the edge.
    const double edge = size / 10;
    const double left = points(std::min(ink.x, logical.x)) - edge;
    const double right = points(std::max(ink.x + ink.width, logical.x + logical.width)) + edge;
    const double top = -points(std::min(ink.y, logical.y)) + edge;
    const double bottom = -points(std::max(ink.y + ink.height, logical.y + logical.height)) - edge;
    const Rectangle bounds{left, bottom, right - left, top - bottom};

    return {.width = points(logical.width) / size,
        .ascent = -points(logical.y) / size,
        .descent = points(logical.y + logical.height) / size,
        .bounds = {bounds.x / size, bounds.y / size, bounds.width / size, bounds.height / size},
        .pdf = drawn(laidOut, bounds, colour)};
}

} // namespace nolfa::LineTypesetter
