#include "Platform/PDFDocument.h"

#include "Platform/CancellationError.h"
#include "Platform/MuPDF/Document.h"
#include "Platform/MuPDF/TextProcessor.h"
#include "Platform/MuPDF/Watchdog.h"
#include "Platform/PlatformError.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <mupdf/fitz.h>
#include <mupdf/pdf.h>
#include <mutex>

namespace nolfa {

namespace {

using mupdf::Context;
using mupdf::Handle;
using Page = Handle<fz_page, fz_drop_page>;
using Pixmap = Handle<fz_pixmap, fz_drop_pixmap>;
using Device = Handle<fz_device, fz_drop_device>;

/// What reading or drawing one page may take. Honest pages take milliseconds, the worst ever seen eleven seconds.
constexpr std::chrono::seconds textLimit(5);
constexpr std::chrono::seconds drawingLimit(20);

/// Pixels of one page's bitmap: A1 at 216 dots per inch.
constexpr double mostPixels = 36e6;

/// Tiles of one pattern on one page. Beyond it nobody sees a difference, and the library can't be stopped while it
/// lays them.
constexpr double mostTiles = 250'000;

/// The draw device's own; the same for all of them.
decltype(fz_device::begin_tile) beginTile = nullptr;

/// Lays a pattern whose tiles would be too many in wider steps.
int beginBoundedTile(fz_context *mu, fz_device *device, fz_rect area, fz_rect view, float stepX, float stepY,
    fz_matrix matrix, int identifier)
{
    const double count = (double{area.x1} - double{area.x0}) / std::abs(double{stepX})
        * ((double{area.y1} - double{area.y0}) / std::abs(double{stepY}));
    const auto widening = static_cast<float>(count > mostTiles ? std::sqrt(count / mostTiles) : 1.0);
    return beginTile(mu, device, area, view, stepX * widening, stepY * widening, matrix, identifier);
}

} // namespace

/// The members that the library calls: nothing with a destructor lives in them.
struct PDFDocument::Implementation {
    mupdf::Document document;
    std::filesystem::path file;
    mupdf::Watchdog watchdog;

    explicit Implementation(std::filesystem::path opened)
        : document(opened)
        , file(std::move(opened))
    {
    }

    /// The page's dictionary, with the media box in place of the crop box: what the library then takes for the page.
    pdf_obj *page(fz_context *mu, std::size_t index) const noexcept
    {
        pdf_obj *const page = document.page(mu, index);
        if (pdf_obj *const mediaBox = pdf_dict_get_inheritable(mu, page, PDF_NAME(MediaBox)); mediaBox != nullptr)
            pdf_dict_put(mu, page, PDF_NAME(CropBox), mediaBox);
        return page;
    }

    /// Whether the page states a media box without area. The library would take a box of its own instead.
    bool hasNoArea(std::size_t index, double scale) const
    {
        bool hasNone = false;
        document.context().call([&](fz_context *mu) noexcept {
            pdf_obj *const box = pdf_dict_get_inheritable(mu, document.page(mu, index), PDF_NAME(MediaBox));
            if (pdf_is_array(mu, box) == 0)
                return;
            const fz_rect bounds = pdf_to_rect(mu, box);
            hasNone = (double{bounds.x1} - double{bounds.x0}) * scale < 1
                || (double{bounds.y1} - double{bounds.y0}) * scale < 1;
        });
        return hasNone;
    }

    std::optional<Bitmap> draw(std::size_t index, double scale, fz_cookie *cookie) const
    {
        const Context &context = document.context();
        if (hasNoArea(index, scale))
            return std::nullopt;
        fz_page *loaded = nullptr;
        context.call([&](fz_context *mu) noexcept {
            page(mu, index);
            loaded = &pdf_load_page(mu, document.get(), static_cast<int>(index))->super;
        });
        const Page page(context, loaded);
        fz_rect bounds{};
        context.call([&](fz_context *mu) noexcept { bounds = fz_bound_page(mu, loaded); });
        const Size size{double{bounds.x1} - double{bounds.x0}, double{bounds.y1} - double{bounds.y0}};
        if (!(size.width > 0 && size.height > 0))
            return std::nullopt;
        const double used = std::min(scale, std::sqrt(mostPixels / size.width / size.height));
        const int width = static_cast<int>(size.width * used);
        const int height = static_cast<int>(size.height * used);
        if (width < 1 || height < 1)
            return std::nullopt;

        const auto ratio = static_cast<float>(used);
        const fz_matrix matrix = fz_pre_translate(fz_scale(ratio, ratio), -bounds.x0, -bounds.y0);
        fz_pixmap *madePixmap = nullptr;
        context.call([&](fz_context *mu) noexcept {
            madePixmap
                = fz_new_pixmap_with_bbox(mu, fz_device_gray(mu), fz_make_irect(0, 0, width, height), nullptr, 0);
        });
        const Pixmap pixmap(context, madePixmap);
        fz_device *madeDevice = nullptr;
        context.call([&](fz_context *mu) noexcept {
            fz_clear_pixmap_with_value(mu, pixmap.get(), 0xFF);
            madeDevice = fz_new_draw_device(mu, matrix, pixmap.get());
        });
        static std::once_flag isKnown;
        std::call_once(isKnown, [madeDevice] { beginTile = madeDevice->begin_tile; });
        madeDevice->begin_tile = beginBoundedTile;
        const Device device(context, madeDevice);
        context.call([&](fz_context *mu) noexcept {
            fz_run_page(mu, loaded, device.get(), fz_identity, cookie);
            fz_close_device(mu, device.get());
        });
        return copied(*pixmap.get());
    }

    static Bitmap copied(const fz_pixmap &pixmap)
    {
        Bitmap bitmap{pixmap.w, pixmap.h, Bitmap::Layout::grey, {}};
        bitmap.pixels.resize(bitmap.bytesPerRow() * static_cast<std::size_t>(bitmap.height));
        for (int row = 0; row < bitmap.height; ++row) {
            std::memcpy(bitmap.pixels.data() + bitmap.bytesPerRow() * static_cast<std::size_t>(row),
                pixmap.samples + pixmap.stride * row, bitmap.bytesPerRow());
        }
        return bitmap;
    }
};

PDFDocument::PDFDocument(std::unique_ptr<Implementation> implementation)
    : m_implementation(std::move(implementation))
{
}

PDFDocument::PDFDocument(PDFDocument &&) noexcept = default;
PDFDocument &PDFDocument::operator=(PDFDocument &&) noexcept = default;
PDFDocument::~PDFDocument() = default;

std::optional<PDFDocument> PDFDocument::open(const std::filesystem::path &file)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error))
        return std::nullopt;
    try {
        auto implementation = std::make_unique<Implementation>(file);
        if (!implementation->document.isLocked())
            implementation->document.listPages();
        return PDFDocument(std::move(implementation));
    } catch (const PlatformError &) {
        return std::nullopt;
    }
}

std::optional<PDFDocument> PDFDocument::openedAgain() const
{
    try {
        auto again = std::make_unique<Implementation>(m_implementation->file);
        if (again->document.isLocked() || m_implementation->document.isLocked())
            return std::nullopt;
        again->document.setPages(m_implementation->document.pages());
        return PDFDocument(std::move(again));
    } catch (const PlatformError &) {
        return std::nullopt;
    }
}

bool PDFDocument::isLocked() const noexcept
{
    return m_implementation->document.isLocked();
}

std::size_t PDFDocument::pageCount() const noexcept
{
    return m_implementation->document.pageCount();
}

Size PDFDocument::pageSize(std::size_t page) const
{
    const Implementation &self = *m_implementation;
    fz_rect bounds = fz_empty_rect;
    if (page >= self.document.pageCount())
        return {};
    self.document.attempt([&](fz_context *mu) noexcept {
        fz_matrix matrix = fz_identity;
        pdf_page_obj_transform(mu, self.page(mu, page), &bounds, &matrix);
        bounds = fz_transform_rect(bounds, matrix);
    });
    if (fz_is_empty_rect(bounds) != 0)
        return {};
    return {double{bounds.x1} - double{bounds.x0}, double{bounds.y1} - double{bounds.y0}};
}

std::vector<PDFTextLine> PDFDocument::textLines(std::size_t page, const std::stop_token &stop) const
{
    Implementation &self = *m_implementation;
    if (page >= self.document.pageCount())
        return {};
    mupdf::Watchdog::Watch watch(self.watchdog, stop, textLimit);
    mupdf::TextProcessor processor(self.document.get(), watch.cookie(), {});
    self.document.attempt([&](fz_context *mu) noexcept {
        pdf_obj *const object = self.page(mu, page);
        fz_rect bounds = fz_empty_rect;
        fz_matrix matrix = fz_identity;
        pdf_page_obj_transform(mu, object, &bounds, &matrix);
        processor.run(mu, pdf_dict_get(mu, object, PDF_NAME(Contents)),
            pdf_dict_get_inheritable(mu, object, PDF_NAME(Resources)), matrix, fz_transform_rect(bounds, matrix));
    });
    processor.release(self.document.context().get());
    watch.require();
    return processor.finish();
}

std::optional<Bitmap> PDFDocument::render(std::size_t page, double scale, const std::stop_token &stop) const
{
    Implementation &self = *m_implementation;
    if (page >= self.document.pageCount())
        return std::nullopt;
    mupdf::Watchdog::Watch watch(self.watchdog, stop, drawingLimit);
    std::optional<Bitmap> bitmap = self.draw(page, scale, watch.cookie());
    watch.require();
    return bitmap;
}

} // namespace nolfa
