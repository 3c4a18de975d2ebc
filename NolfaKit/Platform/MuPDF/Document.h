#pragma once

#include "Platform/FileDescriptor.h"
#include "Platform/MuPDF/Context.h"
#include "Platform/PlatformError.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <mupdf/fitz.h>
#include <mupdf/pdf.h>
#include <string_view>
#include <vector>

namespace nolfa::mupdf {

/// A PDF that is open for reading, in a context of its own. Belongs to one thread at a time.
class Document {
public:
    /// The pages' object numbers, 0 for a page that is no object of its own. Openings of one file may share them.
    using PageObjects = std::shared_ptr<const std::vector<int>>;

    /// @param room  bytes that it may take from the heap beyond what is usual
    /// @throws PlatformError for what isn't a readable PDF
    explicit Document(const std::filesystem::path &file, std::size_t room = 0);
    /// @param bytes  must stay as long as this
    /// @throws PlatformError
    explicit Document(std::string_view bytes);
    Document(const Document &) = delete;
    Document &operator=(const Document &) = delete;
    ~Document() { pdf_drop_document(m_context.get(), m_document); }

    [[nodiscard]] const Context &context() const noexcept { return m_context; }
    [[nodiscard]] pdf_document *get() const noexcept { return m_document; }

    /// The file, while it was opened from one; no memory's.
    [[nodiscard]] const FileDescriptor &file() const noexcept { return m_file; }

    /// Encrypted, and no empty password opens it. No page may be asked for.
    [[nodiscard]] bool isLocked() const noexcept { return m_isLocked; }

    /// Walks the tree of pages. Until then, and before setPages(), there are none.
    /// @throws PlatformError for a tree that claims more pages than there are objects
    void listPages();
    void setPages(PageObjects pages) noexcept { m_pages = std::move(pages); }
    [[nodiscard]] const PageObjects &pages() const noexcept { return m_pages; }
    [[nodiscard]] std::size_t pageCount() const noexcept { return m_pages->size(); }

    /// A page's dictionary, which the document keeps. To be called within a guard.
    [[nodiscard]] pdf_obj *page(fz_context *mu, std::size_t index) const noexcept;

    /// Work that may fail for what the file says.
    /// @return whether it came to its end
    template <typename Body> bool attempt(Body &&body) const
    {
        try {
            m_context.call(body);
            return true;
        } catch (const PlatformError &) {
            return false;
        }
    }

private:
    void open(fz_stream *stream);
    void collectPages(fz_context *mu, std::vector<int> &pages, std::size_t objects) const noexcept;

    FileDescriptor m_file;
    Context m_context;
    pdf_document *m_document = nullptr;
    PageObjects m_pages = std::make_shared<const std::vector<int>>();
    bool m_isLocked = false;
    mutable std::vector<pdf_obj *> m_pendingNodes; ///< of collectPages(), which must own nothing
};

} // namespace nolfa::mupdf
