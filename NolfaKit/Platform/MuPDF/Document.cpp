#include "Platform/MuPDF/Document.h"

#include <fcntl.h>
#include <string>

namespace nolfa::mupdf {

namespace {

using Stream = Handle<fz_stream, fz_drop_stream>;

} // namespace

Document::Document(const std::filesystem::path &file, std::size_t room)
    : m_file(::open(file.c_str(), O_RDONLY | O_CLOEXEC))
    , m_context(Context::usualCache, Context::usualQuota + room)
{
    // By the descriptor, so that both read the same file whatever takes its name meanwhile.
    const std::string path = "/proc/self/fd/" + std::to_string(m_file.get());
    fz_stream *opened = nullptr;
    m_context.call([&](fz_context *mu) noexcept { opened = fz_open_file(mu, path.c_str()); });
    open(opened);
}

Document::Document(std::string_view bytes)
{
    fz_stream *opened = nullptr;
    m_context.call([&](fz_context *mu) noexcept {
        opened = fz_open_memory(mu, reinterpret_cast<const unsigned char *>(bytes.data()), bytes.size());
    });
    open(opened);
}

void Document::open(fz_stream *stream)
{
    const Stream owned(m_context, stream);
    m_context.call([&](fz_context *mu) noexcept { m_document = pdf_open_document_with_stream(mu, stream); });
    try {
        m_context.call([&](fz_context *mu) noexcept {
            m_isLocked = pdf_needs_password(mu, m_document) != 0 && pdf_authenticate_password(mu, m_document, "") == 0;
        });
    } catch (const PlatformError &) {
        pdf_drop_document(m_context.get(), m_document);
        throw;
    }
}

void Document::listPages()
{
    int count = 0;
    int objects = 0;
    m_context.call([&](fz_context *mu) noexcept {
        count = pdf_count_pages(mu, m_document);
        objects = pdf_xref_len(mu, m_document);
    });
    // A damaged tree can claim any number; every page is an object of its own.
    if (count < 0 || count > objects)
        throw PlatformError("more pages than objects");
    // A tree that can't be listed is walked anew for each page.
    std::vector<int> numbers;
    if (!attempt([&](fz_context *mu) noexcept { collectPages(mu, numbers, static_cast<std::size_t>(objects)); })
        || numbers.size() != static_cast<std::size_t>(count))
        numbers.assign(static_cast<std::size_t>(count), 0);
    m_pages = std::make_shared<const std::vector<int>>(std::move(numbers));
}

/// The object numbers of the tree's leaves, in their order; none of a tree that holds a page in itself.
void Document::collectPages(fz_context *mu, std::vector<int> &pages, std::size_t objects) const noexcept
{
    pdf_obj *const root = pdf_dict_getp(mu, pdf_trailer(mu, m_document), "Root/Pages");
    m_pendingNodes.assign(1, root);
    std::size_t seen = 0;
    while (!m_pendingNodes.empty() && seen <= objects) {
        pdf_obj *const node = m_pendingNodes.back();
        m_pendingNodes.pop_back();
        ++seen;
        pdf_obj *const kids = pdf_dict_get(mu, node, PDF_NAME(Kids));
        if (pdf_is_array(mu, kids) == 0) {
            pages.push_back(pdf_is_indirect(mu, node) != 0 ? pdf_to_num(mu, node) : 0);
            continue;
        }
        const int count = pdf_array_len(mu, kids);
        // A node with as many leaves as kids has nothing but leaves, which needn't be parsed yet. What is none after
        // all shows in page().
        if (count == pdf_dict_get_int(mu, node, PDF_NAME(Count))) {
            seen += static_cast<std::size_t>(count);
            for (int kid = 0; kid < count; ++kid)
                pages.push_back(pdf_to_num(mu, pdf_array_get(mu, kids, kid)));
            continue;
        }
        for (int kid = count; kid-- > 0;)
            m_pendingNodes.push_back(pdf_array_get(mu, kids, kid));
    }
    if (!m_pendingNodes.empty())
        pages.clear();
}

pdf_obj *Document::page(fz_context *mu, std::size_t index) const noexcept
{
    const int number = (*m_pages)[index];
    if (number == 0)
        return pdf_lookup_page_obj(mu, m_document, static_cast<int>(index));
    pdf_obj *const page = pdf_load_object(mu, m_document, number);
    pdf_drop_obj(mu, page);
    if (pdf_is_dict(mu, page) == 0 || pdf_dict_get(mu, page, PDF_NAME(Kids)) != nullptr)
        return pdf_lookup_page_obj(mu, m_document, static_cast<int>(index));
    return page;
}

} // namespace nolfa::mupdf
