#include "Platform/PDFDocument.h"

#include "Platform/CancellationError.h"
#include "Platform/MuPDF/Context.h"
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
    Context context;
    pdf_document *document = nullptr;
    std::filesystem::path file;
    std::size_t pageCount = 0;
    /// The pages' object numbers, 0 for a page that is no object of its own. All openings of a file share them.
    std::shared_ptr<const std::vector<int>> pageObjects;
    bool isLocked = false;
    mutable std::vector<pdf_obj *> pendingNodes; ///< of collectPages(), which must own nothing
    mupdf::Watchdog watchdog;

    Implementation() = default;
    Implementation(const Implementation &) = delete;
    Implementation &operator=(const Implementation &) = delete;
    ~Implementation() { pdf_drop_document(context.get(), document); }

    void open()
    {
        Handle<fz_stream, fz_drop_stream> stream;
        {
            fz_stream *opened = nullptr;
            context.call([&](fz_context *mu) noexcept { opened = fz_open_file(mu, file.c_str()); });
            stream = {context, opened};
        }
        context.call([&](fz_context *mu) noexcept { document = pdf_open_document_with_stream(mu, stream.get()); });
        context.call([&](fz_context *mu) noexcept {
            isLocked = pdf_needs_password(mu, document) != 0 && pdf_authenticate_password(mu, document, "") == 0;
        });
    }

    /// Walks the tree of pages.
    void listPages()
    {
        int count = 0;
        int objects = 0;
        context.call([&](fz_context *mu) noexcept {
            count = pdf_count_pages(mu, document);
            objects = pdf_xref_len(mu, document);
        });
        // A damaged tree can claim any number; every page is an object of its own.
        if (count < 0 || count > objects)
            throw PlatformError("more pages than objects");
        pageCount = static_cast<std::size_t>(count);
        // A tree that can't be listed is walked anew for each page.
        std::vector<int> numbers;
        if (!attempt([&](fz_context *mu) noexcept { collectPages(mu, numbers, static_cast<std::size_t>(objects)); })
            || numbers.size() != pageCount)
            numbers.assign(pageCount, 0);
        pageObjects = std::make_shared<const std::vector<int>>(std::move(numbers));
    }

    /// The object numbers of the tree's leaves, in their order; none of a tree that holds a page in itself.
    void collectPages(fz_context *mu, std::vector<int> &pages, std::size_t objects) const noexcept
    {
        pdf_obj *const root = pdf_dict_getp(mu, pdf_trailer(mu, document), "Root/Pages");
        pendingNodes.assign(1, root);
        std::size_t seen = 0;
        while (!pendingNodes.empty() && seen <= objects) {
            pdf_obj *const node = pendingNodes.back();
            pendingNodes.pop_back();
            ++seen;
            pdf_obj *const kids = pdf_dict_get(mu, node, PDF_NAME(Kids));
            if (pdf_is_array(mu, kids) == 0) {
                pages.push_back(pdf_is_indirect(mu, node) != 0 ? pdf_to_num(mu, node) : 0);
                continue;
            }
            const int count = pdf_array_len(mu, kids);
            // A node with as many leaves as kids has nothing but leaves, which needn't be parsed yet. What is none
            // after all shows in dictionary().
            if (count == pdf_dict_get_int(mu, node, PDF_NAME(Count))) {
                seen += static_cast<std::size_t>(count);
                for (int kid = 0; kid < count; ++kid)
                    pages.push_back(pdf_to_num(mu, pdf_array_get(mu, kids, kid)));
                continue;
            }
            for (int kid = count; kid-- > 0;)
                pendingNodes.push_back(pdf_array_get(mu, kids, kid));
        }
        if (!pendingNodes.empty())
            pages.clear();
    }

    /// The page's dictionary; the document keeps it.
    pdf_obj *dictionary(fz_context *mu, std::size_t index) const noexcept
    {
        const int number = (*pageObjects)[index];
        if (number == 0)
            return pdf_lookup_page_obj(mu, document, static_cast<int>(index));
        pdf_obj *const page = pdf_load_object(mu, document, number);
        pdf_drop_obj(mu, page);
        if (pdf_is_dict(mu, page) == 0 || pdf_dict_get(mu, page, PDF_NAME(Kids)) != nullptr)
            return pdf_lookup_page_obj(mu, document, static_cast<int>(index));
        return page;
    }

    /// The page's dictionary, with the media box in place of the crop box: what the library then takes for the page.
    pdf_obj *page(fz_context *mu, std::size_t index) const noexcept
    {
        pdf_obj *const page = dictionary(mu, index);
        if (pdf_obj *const mediaBox = pdf_dict_get_inheritable(mu, page, PDF_NAME(MediaBox)); mediaBox != nullptr)
            pdf_dict_put(mu, page, PDF_NAME(CropBox), mediaBox);
        return page;
    }

    /// Whether the page states a media box without area. The library would take a box of its own instead.
    bool hasNoArea(std::size_t index, double scale) const
    {
        bool hasNone = false;
        context.call([&](fz_context *mu) noexcept {
            pdf_obj *const box = pdf_dict_get_inheritable(mu, dictionary(mu, index), PDF_NAME(MediaBox));
            if (pdf_is_array(mu, box) == 0)
                return;
            const fz_rect bounds = pdf_to_rect(mu, box);
            hasNone = (double{bounds.x1} - double{bounds.x0}) * scale < 1
                || (double{bounds.y1} - double{bounds.y0}) * scale < 1;
        });
        return hasNone;
    }

    /// Work on a page that ends with what it has when the page is damaged.
    template <typename Body> bool attempt(Body &&body) const
    {
        try {
            context.call(body);
            return true;
        } catch (const PlatformError &) {
            return false;
        }
    }

    std::optional<Bitmap> draw(std::size_t index, double scale, fz_cookie *cookie) const
    {
        if (hasNoArea(index, scale))
            return std::nullopt;
        fz_page *loaded = nullptr;
        context.call([&](fz_context *mu) noexcept {
            page(mu, index);
            loaded = &pdf_load_page(mu, document, static_cast<int>(index))->super;
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
        auto implementation = std::make_unique<Implementation>();
        implementation->file = file;
        implementation->open();
        if (!implementation->isLocked)
            implementation->listPages();
        return PDFDocument(std::move(implementation));
    } catch (const PlatformError &) {
        return std::nullopt;
    }
}

std::optional<PDFDocument> PDFDocument::openedAgain() const
{
    try {
        auto again = std::make_unique<Implementation>();
        again->file = m_implementation->file;
        again->open();
        if (again->isLocked || m_implementation->isLocked)
            return std::nullopt;
        again->pageCount = m_implementation->pageCount;
        again->pageObjects = m_implementation->pageObjects;
        return PDFDocument(std::move(again));
    } catch (const PlatformError &) {
        return std::nullopt;
    }
}

bool PDFDocument::isLocked() const noexcept
{
    return m_implementation->isLocked;
}

std::size_t PDFDocument::pageCount() const noexcept
{
    return m_implementation->pageCount;
}

Size PDFDocument::pageSize(std::size_t page) const
{
    const Implementation &self = *m_implementation;
    fz_rect bounds = fz_empty_rect;
    if (page >= self.pageCount)
        return {};
    self.attempt([&](fz_context *mu) noexcept {
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
    if (page >= self.pageCount)
        return {};
    mupdf::Watchdog::Watch watch(self.watchdog, stop, textLimit);
    mupdf::TextProcessor processor(self.document, watch.cookie(), {});
    self.attempt([&](fz_context *mu) noexcept {
        pdf_obj *const object = self.page(mu, page);
        fz_rect bounds = fz_empty_rect;
        fz_matrix matrix = fz_identity;
        pdf_page_obj_transform(mu, object, &bounds, &matrix);
        processor.run(mu, pdf_dict_get(mu, object, PDF_NAME(Contents)),
            pdf_dict_get_inheritable(mu, object, PDF_NAME(Resources)), matrix, fz_transform_rect(bounds, matrix));
    });
    processor.release(self.context.get());
    watch.require();
    return processor.finish();
}

std::optional<Bitmap> PDFDocument::render(std::size_t page, double scale, const std::stop_token &stop) const
{
    Implementation &self = *m_implementation;
    if (page >= self.pageCount)
        return std::nullopt;
    mupdf::Watchdog::Watch watch(self.watchdog, stop, drawingLimit);
    std::optional<Bitmap> bitmap = self.draw(page, scale, watch.cookie());
    watch.require();
    return bitmap;
}

} // namespace nolfa
