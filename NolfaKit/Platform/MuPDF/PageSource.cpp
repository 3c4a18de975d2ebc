#include "Platform/MuPDF/PageSource.h"

#include "Platform/PDFNumber.h"

#include <cmath>
#include <initializer_list>

namespace nolfa::mupdf {

namespace {

using Buffer = Handle<fz_buffer, fz_drop_buffer>;
using Object = Handle<pdf_obj, pdf_drop_obj>;
using Stream = Handle<fz_stream, fz_drop_stream>;

/// What the streams of one page may hold when they are joined.
constexpr std::size_t mostContent = 256U << 20U;

/// US Letter: the page of a file that doesn't tell.
constexpr Rectangle defaultBox{0, 0, 612, 792};

/// The page's unit may be anything that is a size.
constexpr double largestUnit = 75'000;

/// Around a form, so that its own edge is never drawn: the new page cuts where the old one did.
constexpr double margin = 1;

constexpr int fullTurn = 360;
constexpr int quarterTurn = 90;

Rectangle boxOf(const fz_rect &bounds)
{
    const Rectangle box{bounds.x0, bounds.y0, double{bounds.x1} - bounds.x0, double{bounds.y1} - bounds.y0};
    const bool isArea = box.width > 0 && box.height > 0 && std::isfinite(box.width) && std::isfinite(box.height)
        && std::isfinite(box.x) && std::isfinite(box.y);
    return isArea ? box : defaultBox;
}

} // namespace

Size PageFrame::uprightSize() const noexcept
{
    const bool isTurned = rotation % (2 * quarterTurn) != 0;
    return isTurned ? Size{box.height, box.width} : Size{box.width, box.height};
}

Transform PageFrame::upright() const noexcept
{
    const double right = box.x + box.width;
    const double top = box.y + box.height;
    switch (rotation) {
    case quarterTurn:
        return {0, -1, 1, 0, -box.y, right};
    case 2 * quarterTurn:
        return {-1, 0, 0, -1, right, top};
    case 3 * quarterTurn:
        return {0, 1, -1, 0, top, -box.x};
    default:
        return {1, 0, 0, 1, -box.x, -box.y};
    }
}

std::optional<PageFrame> PageSource::frame(const Document &source, std::size_t page)
{
    bool isThere = false;
    fz_rect bounds = fz_empty_rect;
    int rotation = 0;
    float unit = 1;
    source.attempt([&](fz_context *mu) noexcept {
        pdf_obj *const dictionary = source.page(mu, page);
        isThere = pdf_is_dict(mu, dictionary) != 0;
        rotation = pdf_to_int(mu, pdf_dict_get_inheritable(mu, dictionary, PDF_NAME(Rotate)));
        unit = pdf_dict_get_real(mu, dictionary, PDF_NAME(UserUnit));
        pdf_obj *const box = pdf_dict_get_inheritable(mu, dictionary, PDF_NAME(MediaBox));
        constexpr int sides = 4;
        if (pdf_array_len(mu, box) >= sides)
            bounds = pdf_to_rect(mu, box);
    });
    if (!isThere)
        return std::nullopt;
    PageFrame frame;
    frame.box = boxOf(bounds);
    // Anything but a quarter turn means nothing, and turns nothing.
    if (rotation % quarterTurn == 0)
        frame.rotation = (rotation % fullTurn + fullTurn) % fullTurn;
    if (unit > 0 && unit <= largestUnit)
        frame.unit = double{unit};
    return frame;
}

/// A page's content, and what a form of it needs. The document keeps the objects.
struct PageSource::Content {
    pdf_obj *contents = nullptr; ///< a stream, an array of streams, or nothing
    Object kept;
    std::string entries; ///< of the form, but for those of the stream
    std::string group;
    std::string key; ///< equal for pages that show the same
};

PageSource::Content PageSource::content(std::size_t page, const std::string &entries)
{
    Content result;
    std::string resources;
    std::string group;
    bool isKnockout = false;
    pdf_obj *owned = nullptr;
    m_source.attempt([&](fz_context *mu) noexcept {
        pdf_obj *const dictionary = m_source.page(mu, page);
        owned = pdf_keep_obj(mu, dictionary);
        result.contents = pdf_dict_get(mu, dictionary, PDF_NAME(Contents));
        pdf_obj *const inherited = pdf_dict_get_inheritable(mu, dictionary, PDF_NAME(Resources));
        if (inherited != nullptr)
            m_copier.print(mu, inherited, resources);
        if (pdf_obj *const value = pdf_dict_get(mu, dictionary, PDF_NAME(Group)); value != nullptr) {
            isKnockout = pdf_dict_get_bool(mu, value, PDF_NAME(K)) != 0;
            m_copier.print(mu, value, group);
        }
    });
    result.kept = Object(m_source.context(), owned);
    if (resources.empty())
        resources = "<<>>";
    m_copier.setPageResources(resources);
    result.entries = "/Type/XObject/Subtype/Form" + entries + "/Resources " + resources;
    // In a page where what comes later knocks out what came before, the stamp would punch holes: there the group is
    // the form's alone.
    if (!group.empty())
        (isKnockout ? result.entries : result.group) += "/Group " + group;
    m_source.attempt([&](fz_context *mu) noexcept {
        pdf_obj *contents = result.contents;
        if (pdf_is_array(mu, contents) != 0 && pdf_array_len(mu, contents) == 1)
            contents = result.contents = pdf_array_get(mu, contents, 0);
        result.key = result.entries;
        const int count = pdf_is_array(mu, contents) != 0 ? pdf_array_len(mu, contents) : 1;
        for (int index = 0; index < count; ++index) {
            pdf_obj *const part = pdf_is_array(mu, contents) != 0 ? pdf_array_get(mu, contents, index) : contents;
            result.key += ' ';
            result.key += std::to_string(pdf_to_num(mu, part));
        }
    });
    return result;
}

PageSource::Form PageSource::copy(
    std::size_t page, const Rectangle &box, const std::string &entries, const std::stop_token &stop)
{
    std::string formEntries = "/BBox[";
    for (const double side :
        {box.x - margin, box.y - margin, box.x + box.width + margin, box.y + box.height + margin}) {
        PDFNumber::append(formEntries, side);
        formEntries += ' ';
    }
    formEntries.back() = ']';
    const Content shown = content(page, formEntries + entries);
    Form result{.group = shown.group};
    if (const auto known = m_forms.find(shown.key); known != m_forms.end()) {
        result.number = known->second;
        m_copier.copyMentioned(stop);
        return result;
    }

    fz_buffer *loaded = nullptr;
    std::string streamEntries;
    bool isSingle = false;
    m_source.attempt([&](fz_context *mu) noexcept {
        isSingle = pdf_is_stream(mu, shown.contents) != 0 && !ObjectCopier::hasCryptFilter(mu, shown.contents);
        if (isSingle)
            loaded = pdf_load_raw_stream(mu, shown.contents);
    });
    const Buffer buffer(m_source.context(), loaded);
    if (isSingle && loaded != nullptr) {
        m_source.attempt([&](fz_context *mu) noexcept {
            for (pdf_obj *const key : {PDF_NAME(Filter), PDF_NAME(DecodeParms)}) {
                if (pdf_obj *const value = pdf_dict_get(mu, shown.contents, key); value != nullptr) {
                    streamEntries += '/';
                    streamEntries += pdf_to_name(mu, key);
                    m_copier.print(mu, value, streamEntries);
                }
            }
        });
        result.number = m_target.newNumber();
        m_target.stream(
            result.number, shown.entries + streamEntries, {reinterpret_cast<const char *>(loaded->data), loaded->len});
    } else if (const std::string bytes = joined(shown.contents); !bytes.empty()) {
        result.number = m_target.newNumber();
        m_target.packedStream(result.number, shown.entries, bytes);
    }
    m_forms.emplace(shown.key, result.number);
    m_copier.copyMentioned(stop);
    return result;
}

std::string PageSource::joined(pdf_obj *contents) const
{
    std::string result;
    fz_stream *opened = nullptr;
    m_source.attempt([&](fz_context *mu) noexcept {
        if (contents != nullptr && (pdf_is_array(mu, contents) != 0 || pdf_is_stream(mu, contents) != 0))
            opened = pdf_open_contents_stream(mu, m_source.get(), contents);
    });
    if (opened == nullptr)
        return result;
    const Stream stream(m_source.context(), opened);
    // Of a damaged stream, what comes before the damage.
    m_source.attempt([&](fz_context *mu) noexcept {
        for (;;) {
            const std::size_t count = fz_available(mu, opened, 1);
            if (count == 0 || result.size() + count > mostContent)
                return;
            result.append(reinterpret_cast<const char *>(opened->rp), count);
            opened->rp += count;
        }
    });
    return result;
}

std::string PageSource::catalogEntries(const std::stop_token &stop)
{
    std::string result;
    m_copier.setPageResources({});
    for (pdf_obj *const key : {PDF_NAME(OCProperties), PDF_NAME(OutputIntents)}) {
        std::string entry;
        m_source.attempt([&](fz_context *mu) noexcept {
            pdf_obj *const root = pdf_dict_get(mu, pdf_trailer(mu, m_source.get()), PDF_NAME(Root));
            pdf_obj *const value = pdf_dict_get(mu, root, key);
            if (value == nullptr)
                return;
            entry += '/';
            entry += pdf_to_name(mu, key);
            m_copier.print(mu, value, entry);
        });
        result += entry;
    }
    m_copier.copyMentioned(stop);
    return result;
}

} // namespace nolfa::mupdf
