#include "Platform/XMLReader.h"

#include "Platform/CancellationError.h"
#include "Platform/FileDescriptor.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <exception>
#include <expat.h>
#include <fcntl.h>
#include <memory>
#include <new>
#include <sys/stat.h>

namespace nolfa {

namespace {

constexpr int pieceSize = 1 << 16;

struct Free {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};

/// One expat parser that passes its events on. An exception must not cross expat's C frames: it stops the parser,
/// and leaves afterwards.
class Parser {
public:
    explicit Parser(XMLHandler &handler)
        : m_handler(handler)
        , m_parser(XML_ParserCreate(nullptr))
    {
        if (!m_parser)
            throw std::bad_alloc();
        XML_SetUserData(m_parser.get(), this);
        XML_SetElementHandler(m_parser.get(), onStart, onEnd);
        XML_SetCharacterDataHandler(m_parser.get(), onCharacters);
    }

    [[nodiscard]] void *buffer()
    {
        void *buffer = XML_GetBuffer(m_parser.get(), pieceSize);
        if (buffer == nullptr)
            throw std::bad_alloc();
        return buffer;
    }

    /// Takes what was put into the buffer. False after an error.
    bool takeBuffer(int size, bool isLast) { return finish(XML_ParseBuffer(m_parser.get(), size, isLast ? 1 : 0)); }

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
            event(self->m_handler);
        } catch (...) {
            self->m_failure = std::current_exception();
            XML_StopParser(self->m_parser.get(), XML_FALSE);
        }
    }

    static void onStart(void *data, const char *name, const char **attributes)
    {
        guarded(data, [=](XMLHandler &handler) { handler.startElement(name, XMLAttributes(attributes)); });
    }
    static void onEnd(void *data, const char *name)
    {
        guarded(data, [=](XMLHandler &handler) { handler.endElement(name); });
    }
    static void onCharacters(void *data, const char *text, int length)
    {
        guarded(data, [=](XMLHandler &handler) { handler.characters({text, static_cast<std::size_t>(length)}); });
    }

    XMLHandler &m_handler;
    std::unique_ptr<XML_ParserStruct, Free> m_parser;
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

} // namespace

std::optional<std::string_view> XMLAttributes::find(std::string_view name) const
{
    for (const char *const *pair = m_pairs; *pair != nullptr; pair += 2) {
        if (name == pair[0])
            return pair[1];
    }
    return std::nullopt;
}

XMLReader::Outcome XMLReader::read(const std::filesystem::path &file, XMLHandler &handler, const std::stop_token &stop)
{
    const FileDescriptor descriptor = openRegular(file);
    if (!descriptor.isOpen())
        return Outcome::unreadable;
    Parser parser(handler);
    for (;;) {
        throwIfStopped(stop);
        const ssize_t size = ::read(descriptor.get(), parser.buffer(), pieceSize);
        if (size < 0 && errno == EINTR)
            continue;
        if (size < 0)
            return Outcome::malformed;
        if (!parser.takeBuffer(static_cast<int>(size), size == 0))
            return Outcome::malformed;
        if (size == 0)
            return Outcome::wellFormed;
    }
}

XMLReader::Outcome XMLReader::read(std::string_view document, XMLHandler &handler)
{
    Parser parser(handler);
    for (;;) {
        const std::string_view piece = document.substr(0, pieceSize);
        document.remove_prefix(piece.size());
        if (!parser.take(piece, document.empty()))
            return Outcome::malformed;
        if (document.empty())
            return Outcome::wellFormed;
    }
}

} // namespace nolfa
