#pragma once

#include "Platform/ByteSink.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace nolfa {

/// Writes a PDF object by object, in any order (ISO 32000-1, 7.5). Plain objects go packed into object streams, so
/// that thousands of pages take little room. Memory follows the number of objects, not what they hold.
/// Not thread-safe.
class PDFWriter {
public:
    /// @param sink  must outlive this; what it throws passes through
    explicit PDFWriter(ByteSink &sink);

    /// The number of an object to be written later; every number given out must be written.
    [[nodiscard]] int newNumber();

    /// "12 0 R".
    [[nodiscard]] static std::string reference(int number);

    /// @param body  what stands between "obj" and "endobj"
    void object(int number, std::string_view body);

    /// @param entries  of the stream's dictionary, /Length left out
    /// @param data     encoded as the entries say
    void stream(int number, std::string_view entries, std::string_view data);

    /// As above, with data that lies in another file.
    void stream(int number, std::string_view entries, const FileRange &data);

    /// As above, and packs the data.
    void packedStream(int number, std::string_view entries, std::string_view data);

    /// Writes what is still gathered, and where everything lies.
    void finish(int catalog);

private:
    /// Where an object lies.
    struct Place {
        bool isPacked = false;
        std::uint64_t position = 0; ///< in the file; of a packed one, the number of its stream
        std::uint32_t index = 0; ///< of a packed one, in its stream
    };

    void put(std::string_view bytes);
    void flush();
    void beginObject(int number);
    void beginStream(int number, std::string_view entries, std::uint64_t size);
    void endStream();
    void writeGathered();
    [[nodiscard]] std::string placeTable() const;

    ByteSink &m_sink;
    std::string m_buffer;
    std::uint64_t m_size = 0;
    std::vector<Place> m_places{1}; ///< by number
    std::vector<int> m_gathered; ///< numbers of the objects in the stream to come
    std::string m_offsets;
    std::string m_bodies;
};

} // namespace nolfa
