#include "Platform/MuPDF/ObjectCopier.h"

#include "Platform/CancellationError.h"
#include "Platform/PDFNumber.h"

#include <algorithm>
#include <array>
#include <unistd.h>

namespace nolfa::mupdf {

namespace {

using Object = Handle<pdf_obj, pdf_drop_obj>;
using Buffer = Handle<fz_buffer, fz_drop_buffer>;

/// Arrays and dictionaries within one another in a single object. Honest files have a handful.
constexpr int mostDepth = 100;

/// Bytes of a stream from which on the system copies it faster than we do.
constexpr std::int64_t leastRange = 64 << 10;

constexpr std::string_view digits = "0123456789ABCDEF";

void printName(std::string_view name, std::string &out)
{
    constexpr std::string_view special = "()<>[]{}/%#";
    out += '/';
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte > ' ' && byte < 0x7F && special.find(c) == std::string_view::npos) {
            out += c;
            continue;
        }
        out += '#';
        out += digits[byte >> 4U];
        out += digits[byte & 15U];
    }
}

void printString(std::string_view text, std::string &out)
{
    out += '<';
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        out += digits[byte >> 4U];
        out += digits[byte & 15U];
    }
    out += '>';
}

/// Two values that would run together need a blank between them.
void separate(std::string &out)
{
    constexpr std::string_view delimiters = "[]<> ";
    if (!out.empty() && delimiters.find(out.back()) == std::string_view::npos)
        out += ' ';
}

bool isPage(fz_context *mu, pdf_obj *object) noexcept
{
    pdf_obj *const type = pdf_is_dict(mu, object) != 0 ? pdf_dict_get(mu, object, PDF_NAME(Type)) : nullptr;
    return pdf_name_eq(mu, type, PDF_NAME(Page)) != 0 || pdf_name_eq(mu, type, PDF_NAME(Pages)) != 0
        || pdf_name_eq(mu, type, PDF_NAME(Catalog)) != 0;
}

} // namespace

ObjectCopier::ObjectCopier(const Document &source, PDFWriter &target)
    : m_source(source)
    , m_target(target)
{
}

void ObjectCopier::copyMentioned(const std::stop_token &stop)
{
    while (!m_pending.empty()) {
        throwIfStopped(stop);
        const int number = m_pending.back();
        m_pending.pop_back();
        copy(number, m_numbers[static_cast<std::size_t>(number)]);
    }
}

void ObjectCopier::copy(int number, int newNumber)
{
    pdf_obj *loaded = nullptr;
    m_source.attempt([&](fz_context *mu) noexcept { loaded = pdf_load_object(mu, m_source.get(), number); });
    const Object object(m_source.context(), loaded);
    bool isStream = false;
    m_text.clear();
    const bool isWhole = m_source.attempt([&](fz_context *mu) noexcept {
        isStream = pdf_obj_num_is_stream(mu, m_source.get(), number) != 0;
        if (!isStream && !isPage(mu, loaded))
            print(mu, loaded, m_text);
    });
    if (isStream && isWhole && copyStream(number, newNumber, loaded))
        return;
    m_target.object(newNumber, isStream || !isWhole || m_text.empty() ? "null" : m_text);
}

bool ObjectCopier::copyStream(int number, int newNumber, pdf_obj *dictionary)
{
    bool isDecoded = false;
    m_text.clear();
    const bool isPrinted = m_source.attempt([&](fz_context *mu) noexcept {
        isDecoded = hasCryptFilter(mu, dictionary);
        printStreamEntries(mu, dictionary, isDecoded, m_text);
    });
    if (!isPrinted)
        return false;
    if (const std::optional<FileRange> range = storedRange(number, dictionary)) {
        m_target.stream(newNumber, m_text, *range);
        return true;
    }
    fz_buffer *loaded = nullptr;
    m_source.attempt([&](fz_context *mu) noexcept {
        loaded = isDecoded ? pdf_load_stream_number(mu, m_source.get(), number)
                           : pdf_load_raw_stream_number(mu, m_source.get(), number);
    });
    const Buffer buffer(m_source.context(), loaded);
    if (loaded == nullptr)
        return false;
    const std::string_view data(reinterpret_cast<const char *>(loaded->data), loaded->len);
    if (isDecoded)
        m_target.packedStream(newNumber, m_text, data);
    else
        m_target.stream(newNumber, m_text, data);
    return true;
}

/// Where a stream's bytes lie in the file just as they are needed. Absent for a small one, which costs less otherwise,
/// an encrypted one, and one that doesn't end where it says.
std::optional<FileRange> ObjectCopier::storedRange(int number, pdf_obj *dictionary) const
{
    if (!m_source.file().isOpen())
        return std::nullopt;
    std::int64_t offset = 0;
    std::int64_t size = 0;
    m_source.attempt([&](fz_context *mu) noexcept {
        const bool isEncrypted = pdf_dict_get(mu, pdf_trailer(mu, m_source.get()), PDF_NAME(Encrypt)) != nullptr;
        const pdf_xref_entry *const entry = pdf_get_xref_entry(mu, m_source.get(), number);
        if (isEncrypted || entry == nullptr || entry->stm_buf != nullptr)
            return;
        offset = entry->stm_ofs;
        size = pdf_to_int64(mu, pdf_dict_get(mu, dictionary, PDF_NAME(Length)));
    });
    if (offset <= 0 || size < leastRange)
        return std::nullopt;
    std::array<char, sizeof "\r\nendstream" - 1> behind{};
    const ssize_t count = ::pread(m_source.file().get(), behind.data(), behind.size(), offset + size);
    std::string_view end(behind.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    end.remove_prefix(std::min(end.find_first_not_of("\r\n"), end.size()));
    if (!end.starts_with("endstream"))
        return std::nullopt;
    return FileRange{m_source.file().get(), static_cast<std::uint64_t>(offset), static_cast<std::uint64_t>(size)};
}

bool ObjectCopier::hasCryptFilter(fz_context *mu, pdf_obj *dictionary) noexcept
{
    pdf_obj *const filter = pdf_dict_get(mu, dictionary, PDF_NAME(Filter));
    if (pdf_is_array(mu, filter) == 0)
        return pdf_name_eq(mu, filter, PDF_NAME(Crypt)) != 0;
    for (int index = 0; index < pdf_array_len(mu, filter); ++index) {
        if (pdf_name_eq(mu, pdf_array_get(mu, filter, index), PDF_NAME(Crypt)) != 0)
            return true;
    }
    return false;
}

void ObjectCopier::print(fz_context *mu, pdf_obj *value, std::string &out, int depth) noexcept
{
    if (pdf_is_indirect(mu, value) != 0) {
        printReference(mu, value, out);
    } else if (depth > mostDepth || value == nullptr || pdf_is_null(mu, value) != 0) {
        separate(out);
        out += "null";
    } else if (pdf_is_name(mu, value) != 0) {
        printName(pdf_to_name(mu, value), out);
    } else if (pdf_is_int(mu, value) != 0) {
        separate(out);
        out += std::to_string(pdf_to_int64(mu, value));
    } else if (pdf_is_real(mu, value) != 0) {
        separate(out);
        PDFNumber::append(out, pdf_to_real(mu, value));
    } else if (pdf_is_bool(mu, value) != 0) {
        separate(out);
        out += pdf_to_bool(mu, value) != 0 ? "true" : "false";
    } else if (pdf_is_string(mu, value) != 0) {
        printString({pdf_to_str_buf(mu, value), pdf_to_str_len(mu, value)}, out);
    } else if (pdf_is_array(mu, value) != 0) {
        out += '[';
        const int count = pdf_array_len(mu, value);
        for (int index = 0; index < count; ++index)
            print(mu, pdf_array_get(mu, value, index), out, depth + 1);
        out += ']';
    } else {
        out += "<<";
        printEntries(mu, value, out, depth);
        if (lacksResources(mu, value))
            out += "/Resources " + m_pageResources;
        out += ">>";
    }
}

void ObjectCopier::printReference(fz_context *mu, pdf_obj *reference, std::string &out) noexcept
{
    separate(out);
    const int number = pdf_to_num(mu, reference);
    // A file that turns out to be damaged while it is read may have more objects than it said.
    const int count = pdf_xref_len(mu, m_source.get());
    if (static_cast<std::size_t>(count) > m_numbers.size())
        m_numbers.resize(static_cast<std::size_t>(count), 0);
    if (number <= 0 || number >= count) {
        out += "null";
        return;
    }
    int &newNumber = m_numbers[static_cast<std::size_t>(number)];
    if (newNumber == 0) {
        newNumber = m_target.newNumber();
        m_pending.push_back(number);
    }
    out += PDFWriter::reference(newNumber);
}

void ObjectCopier::printEntries(fz_context *mu, pdf_obj *dictionary, std::string &out, int depth) noexcept
{
    const int count = pdf_dict_len(mu, dictionary);
    for (int index = 0; index < count; ++index) {
        printName(pdf_to_name(mu, pdf_dict_get_key(mu, dictionary, index)), out);
        print(mu, pdf_dict_get_val(mu, dictionary, index), out, depth + 1);
    }
}

void ObjectCopier::printStreamEntries(fz_context *mu, pdf_obj *dictionary, bool isDecoded, std::string &out) noexcept
{
    const int count = pdf_dict_len(mu, dictionary);
    for (int index = 0; index < count; ++index) {
        pdf_obj *const key = pdf_dict_get_key(mu, dictionary, index);
        if (pdf_name_eq(mu, key, PDF_NAME(Length)) != 0)
            continue;
        if (isDecoded
            && (pdf_name_eq(mu, key, PDF_NAME(Filter)) != 0 || pdf_name_eq(mu, key, PDF_NAME(DecodeParms)) != 0))
            continue;
        printName(pdf_to_name(mu, key), out);
        print(mu, pdf_dict_get_val(mu, dictionary, index), out, 1);
    }
    if (lacksResources(mu, dictionary))
        out += "/Resources " + m_pageResources;
}

bool ObjectCopier::lacksResources(fz_context *mu, pdf_obj *dictionary) const noexcept
{
    if (m_pageResources.empty())
        return false;
    pdf_obj *const kind = pdf_dict_get(mu, dictionary, PDF_NAME(Subtype));
    // Whoever prints must not be thrown out halfway, as following a reference can do.
    if (pdf_is_indirect(mu, kind) != 0)
        return false;
    const bool takesResources
        = pdf_name_eq(mu, kind, PDF_NAME(Form)) != 0 || pdf_name_eq(mu, kind, PDF_NAME(Type3)) != 0;
    return takesResources && pdf_dict_get(mu, dictionary, PDF_NAME(Resources)) == nullptr;
}

} // namespace nolfa::mupdf
