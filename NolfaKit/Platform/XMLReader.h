#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <stop_token>
#include <string_view>
#include <utility>

namespace nolfa {

/// The attributes of one element start, in the order of the document. Valid during the event only.
class XMLAttributes {
public:
    using Pair = std::pair<std::string_view, std::string_view>;

    explicit XMLAttributes(std::span<const Pair> pairs)
        : m_pairs(pairs)
    {
    }

    /// The value of that name as it stands in the document, prefix included.
    [[nodiscard]] std::optional<std::string_view> find(std::string_view name) const;

    template <typename Visit> void forEach(Visit visit) const
    {
        for (const Pair &pair : m_pairs)
            visit(pair.first, pair.second);
    }

private:
    std::span<const Pair> m_pairs;
};

/// What a forward reader of XML gets to hear. Names are as they stand in the document: there is no namespace
/// processing. An element start counts only once its whole tag was well formed.
class XMLHandler {
public:
    XMLHandler() = default;
    XMLHandler(const XMLHandler &) = delete;
    XMLHandler &operator=(const XMLHandler &) = delete;
    virtual ~XMLHandler() = default;

    virtual void startElement(std::string_view name, const XMLAttributes &attributes) = 0;
    virtual void endElement(std::string_view name) = 0;
    /// UTF-8; may arrive in several pieces. CDATA is character data.
    virtual void characters(std::string_view text) = 0;
};

/// XML 1.0 as a stream of events. Entities are expanded up to the parser's own limits against bombs; nothing outside
/// the document is ever opened. Thread-safe: no shared state.
namespace XMLReader {

/// What a document that was read to its end, or to its first error, was.
enum class Outcome {
    wellFormed,
    malformed, ///< the events before the error were delivered
    unreadable ///< no file, or none that can be opened
};

/// Reads a file in pieces, never holding it whole.
/// @throws CancellationError when @p stop was requested; checked for every 64 KiB,
///         and whatever a handler throws
Outcome read(const std::filesystem::path &file, XMLHandler &handler, const std::stop_token &stop);

/// The same for a document in memory.
Outcome read(std::string_view document, XMLHandler &handler);

/// The same by the general parser alone: slower, and what read() is measured by.
Outcome readPlainly(std::string_view document, XMLHandler &handler);

} // namespace XMLReader

} // namespace nolfa
