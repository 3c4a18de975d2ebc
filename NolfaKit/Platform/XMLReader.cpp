#include "Platform/XMLReader.h"

#include "Platform/CancellationError.h"
#include "Platform/FileDescriptor.h"
#include "Platform/XMLScanner.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <exception>
#include <expat.h>
#include <fcntl.h>
#include <memory>
#include <new>
#include <span>
#include <sys/stat.h>
#include <vector>

namespace nolfa {

namespace {

/// On the stack, and never cleared: with hundreds of small parts that would cost more than parsing them.
using Piece = std::array<char, 1U << 16U>;

struct Free {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};

/// One expat parser that passes its events on. An exception must not cross expat's C frames: it stops the parser,
/// and leaves afterwards.
class Parser {
public:
    /// @param tags  how many element starts and ends were delivered already
    /// @param text  and how many bytes of text behind the last of them
    Parser(XMLHandler &handler, std::uint64_t tags, std::uint64_t text)
        : m_handler(handler)
        , m_parser(XML_ParserCreate(nullptr))
        , m_tagsToSkip(tags)
        , m_textToSkip(text)
    {
        if (!m_parser)
            throw std::bad_alloc();
        XML_SetUserData(m_parser.get(), this);
        XML_SetElementHandler(m_parser.get(), onStart, onEnd);
        XML_SetCharacterDataHandler(m_parser.get(), onCharacters);
    }

    /// False after an error.
    bool take(std::string_view piece, bool isLast)
    {
        return finish(XML_Parse(m_parser.get(), piece.data(), static_cast<int>(piece.size()), isLast ? 1 : 0));
    }

private:
    bool finish(XML_Status status)
    {
        if (m_failure)
            std::rethrow_exception(m_failure);
        return status == XML_STATUS_OK;
    }

    template <typename Event> static void guarded(void *data, Event event) noexcept
    {
        auto *self = static_cast<Parser *>(data);
        if (self->m_failure)
            return;
        try {
            event(*self);
        } catch (...) {
            self->m_failure = std::current_exception();
            XML_StopParser(self->m_parser.get(), XML_FALSE);
        }
    }

    static void onStart(void *data, const char *name, const char **attributes)
    {
        guarded(data, [=](Parser &self) { self.start(name, attributes); });
    }
    static void onEnd(void *data, const char *name)
    {
        guarded(data, [=](Parser &self) {
            if (!self.skipsTag())
                self.m_handler.endElement(name);
        });
    }
    static void onCharacters(void *data, const char *text, int length)
    {
        guarded(data, [=](Parser &self) { self.characters({text, static_cast<std::size_t>(length)}); });
    }

    bool skipsTag()
    {
        if (m_tagsToSkip == 0) {
            m_textToSkip = 0;
            return false;
        }
        --m_tagsToSkip;
        return true;
    }

    void start(const char *name, const char **attributes)
    {
        if (skipsTag())
            return;
        m_attributes.clear();
        for (const char **pair = attributes; *pair != nullptr; pair += 2)
            m_attributes.emplace_back(pair[0], pair[1]);
        m_handler.startElement(name, XMLAttributes(m_attributes));
    }

    void characters(std::string_view text)
    {
        if (m_tagsToSkip > 0)
            return;
        const std::size_t skipped = std::min<std::uint64_t>(m_textToSkip, text.size());
        m_textToSkip -= skipped;
        text.remove_prefix(skipped);
        if (!text.empty())
            m_handler.characters(text);
    }

    XMLHandler &m_handler;
    std::unique_ptr<XML_ParserStruct, Free> m_parser;
    std::uint64_t m_tagsToSkip;
    std::uint64_t m_textToSkip;
    std::vector<XMLAttributes::Pair> m_attributes;
    std::exception_ptr m_failure;
};

/// A regular file, open for reading, or nothing.
FileDescriptor openRegular(const std::filesystem::path &file)
{
    FileDescriptor descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat about { };
    if (descriptor.isOpen() && (::fstat(descriptor.get(), &about) != 0 || !S_ISREG(about.st_mode)))
        descriptor.reset();
    return descriptor;
}

/// Where a document comes from; it can be read again from its start.
class Source {
public:
    virtual ~Source() = default;
    /// @return the bytes put into the buffer; 0 at the end, absent after an error
    virtual std::optional<std::size_t> read(char *buffer, std::size_t size) = 0;
    virtual void rewind() = 0;
};

class FileSource : public Source {
public:
    FileSource(FileDescriptor descriptor, std::stop_token stop)
        : m_descriptor(std::move(descriptor))
        , m_stop(std::move(stop))
    {
    }

    std::optional<std::size_t> read(char *buffer, std::size_t size) override
    {
        for (;;) {
            throwIfStopped(m_stop);
            const ssize_t count = ::read(m_descriptor.get(), buffer, size);
            if (count >= 0)
                return static_cast<std::size_t>(count);
            if (errno != EINTR)
                return std::nullopt;
        }
    }
    void rewind() override { ::lseek(m_descriptor.get(), 0, SEEK_SET); }

private:
    FileDescriptor m_descriptor;
    std::stop_token m_stop;
};

class TextSource : public Source {
public:
    explicit TextSource(std::string_view text)
        : m_text(text)
        , m_left(text)
    {
    }

    std::optional<std::size_t> read(char *buffer, std::size_t size) override
    {
        const std::size_t count = m_left.copy(buffer, size);
        m_left.remove_prefix(count);
        return count;
    }
    void rewind() override { m_left = m_text; }

private:
    std::string_view m_text;
    std::string_view m_left;
};

XMLReader::Outcome parse(Source &source, Parser &parser, std::span<char> buffer)
{
    for (;;) {
        const std::optional<std::size_t> size = source.read(buffer.data(), buffer.size());
        if (!size || !parser.take({buffer.data(), *size}, *size == 0))
            return XMLReader::Outcome::malformed;
        if (*size == 0)
            return XMLReader::Outcome::wellFormed;
    }
}

/// Whether the scanner understood the whole document.
bool scan(Source &source, XMLScanner &scanner, std::span<char> buffer)
{
    std::size_t kept = 0;
    for (;;) {
        // A tag or a text that fills the whole buffer is the general parser's.
        if (kept == buffer.size())
            return false;
        const std::optional<std::size_t> size = source.read(buffer.data() + kept, buffer.size() - kept);
        if (!size)
            return false;
        if (*size == 0)
            return kept == 0 && scanner.isComplete();
        std::size_t used = 0;
        const std::string_view piece(buffer.data(), kept + *size);
        if (scanner.take(piece, used) == XMLScanner::Progress::givesUp)
            return false;
        kept = piece.size() - used;
        std::memmove(buffer.data(), buffer.data() + used, kept);
    }
}

XMLReader::Outcome readFrom(Source &source, XMLHandler &handler)
{
    Piece buffer; // NOLINT: filled by reading
    XMLScanner scanner(handler);
    if (scan(source, scanner, buffer))
        return XMLReader::Outcome::wellFormed;
    source.rewind();
    Parser parser(handler, scanner.tagCount(), scanner.textSize());
    return parse(source, parser, buffer);
}

} // namespace

std::optional<std::string_view> XMLAttributes::find(std::string_view name) const
{
    const auto found = std::ranges::find(m_pairs, name, &Pair::first);
    return found == m_pairs.end() ? std::nullopt : std::optional(found->second);
}

XMLReader::Outcome XMLReader::read(const std::filesystem::path &file, XMLHandler &handler, const std::stop_token &stop)
{
    FileDescriptor descriptor = openRegular(file);
    if (!descriptor.isOpen())
        return Outcome::unreadable;
    FileSource source(std::move(descriptor), stop);
    return readFrom(source, handler);
}

XMLReader::Outcome XMLReader::read(std::string_view document, XMLHandler &handler)
{
    TextSource source(document);
    return readFrom(source, handler);
}

XMLReader::Outcome XMLReader::readPlainly(std::string_view document, XMLHandler &handler)
{
    TextSource source(document);
    Parser parser(handler, 0, 0);
    Piece buffer; // NOLINT: filled by reading
    return parse(source, parser, buffer);
}

} // namespace nolfa
