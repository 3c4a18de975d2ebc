#pragma once

#include "Platform/MuPDF/Document.h"
#include "Platform/PDFWriter.h"

#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace nolfa::mupdf {

/// Brings objects of a PDF over into a new one, each once, its streams as they are stored. What is damaged becomes
/// null. Pages aren't brought over: whatever points to one points to nothing. Not thread-safe.
class ObjectCopier {
public:
    /// Both must outlive this.
    ObjectCopier(const Document &source, PDFWriter &target);

    /// How a value reads in the new file. The objects that it mentions are brought over by copyMentioned().
    /// To be called within a guard, which it never leaves by a failure.
    /// @param value  null, or of the source
    void print(fz_context *mu, pdf_obj *value, std::string &out) noexcept { print(mu, value, out, 0); }

    /// The entries of a stream's dictionary without those that the writer adds. To be called within a guard.
    void printStreamEntries(fz_context *mu, pdf_obj *dictionary, bool isDecoded, std::string &out) noexcept;

    /// What forms and fonts without resources of their own take: those of the page that shows them.
    void setPageResources(std::string printed) { m_pageResources = std::move(printed); }

    /// Writes every object mentioned so far, and what it mentions in turn.
    /// @throws CancellationError after a stop; what the writer's sink throws
    void copyMentioned(const std::stop_token &stop);

    /// Whether a stream's data can't be kept as it is stored, since the new file has no encryption.
    /// To be called within a guard.
    [[nodiscard]] static bool hasCryptFilter(fz_context *mu, pdf_obj *dictionary) noexcept;

private:
    void print(fz_context *mu, pdf_obj *value, std::string &out, int depth) noexcept;
    void printReference(fz_context *mu, pdf_obj *reference, std::string &out) noexcept;
    void printEntries(fz_context *mu, pdf_obj *dictionary, std::string &out, int depth) noexcept;
    void copy(int number, int newNumber);
    [[nodiscard]] bool copyStream(int number, int newNumber, pdf_obj *dictionary);
    [[nodiscard]] std::optional<FileRange> storedRange(int number, pdf_obj *dictionary) const;
    [[nodiscard]] bool lacksResources(fz_context *mu, pdf_obj *dictionary) const noexcept;

    const Document &m_source;
    PDFWriter &m_target;
    std::vector<int> m_numbers; ///< in the new file, by those in the source; 0: not mentioned yet
    std::vector<int> m_pending; ///< mentioned, and not copied yet
    std::string m_pageResources;
    std::string m_text; ///< of the object at hand
};

} // namespace nolfa::mupdf
