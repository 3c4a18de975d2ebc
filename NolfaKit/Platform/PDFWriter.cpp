#include "Platform/PDFWriter.h"

#include "Platform/Zlib.h"

#include <array>

namespace nolfa {

namespace {

/// What one object stream holds: enough to pack well, little enough to read a single object fast.
constexpr std::size_t mostGathered = 200;
constexpr std::size_t largeBodies = 64U << 10U;

constexpr std::size_t bufferSize = 256U << 10U;

std::string packed(std::string_view data)
{
    Deflater deflater;
    std::string result;
    deflater.append({reinterpret_cast<const unsigned char *>(data.data()), data.size()}, result);
    deflater.finish(result);
    return result;
}

/// Bytes of a row in the table of places: kind, position, index.
constexpr std::size_t positionBytes = 5;
constexpr std::size_t indexBytes = 2;
constexpr std::size_t rowBytes = 1 + positionBytes + indexBytes;
using Row = std::array<std::uint8_t, rowBytes>;

Row tableRow(std::uint8_t kind, std::uint64_t position, std::uint64_t index)
{
    constexpr unsigned byteBits = 8;
    Row row{kind};
    for (std::size_t byte = 0; byte < positionBytes; ++byte)
        row[positionBytes - byte] = static_cast<std::uint8_t>(position >> (byteBits * byte));
    for (std::size_t byte = 0; byte < indexBytes; ++byte)
        row[rowBytes - 1 - byte] = static_cast<std::uint8_t>(index >> (byteBits * byte));
    return row;
}

} // namespace

PDFWriter::PDFWriter(ByteSink &sink)
    : m_sink(sink)
{
    // The comment tells programs that move files that this isn't text.
    put("%PDF-1.7\n%\xE2\xE3\xCF\xD3\n");
}

int PDFWriter::newNumber()
{
    m_places.emplace_back();
    return static_cast<int>(m_places.size()) - 1;
}

std::string PDFWriter::reference(int number)
{
    return std::to_string(number) + " 0 R";
}

void PDFWriter::object(int number, std::string_view body)
{
    m_offsets += std::to_string(number) + " " + std::to_string(m_bodies.size()) + " ";
    m_bodies.append(body).append("\n");
    m_gathered.push_back(number);
    if (m_gathered.size() >= mostGathered || m_bodies.size() >= largeBodies)
        writeGathered();
}

void PDFWriter::stream(int number, std::string_view entries, std::string_view data)
{
    beginStream(number, entries, data.size());
    put(data);
    endStream();
}

void PDFWriter::stream(int number, std::string_view entries, const FileRange &data)
{
    beginStream(number, entries, data.size);
    flush();
    m_sink.write(data);
    m_size += data.size;
    endStream();
}

void PDFWriter::packedStream(int number, std::string_view entries, std::string_view data)
{
    stream(number, std::string(entries) + "/Filter/FlateDecode", packed(data));
}

void PDFWriter::finish(int catalog)
{
    writeGathered();
    const int number = newNumber();
    const std::uint64_t start = m_size;
    m_places.back().position = start;
    const std::string size = std::to_string(m_places.size());
    packedStream(number,
        "/Type/XRef/Size " + size + "/W[1 " + std::to_string(positionBytes) + " " + std::to_string(indexBytes)
            + "]/Root " + reference(catalog) + "/DecodeParms<</Predictor 12/Columns " + std::to_string(rowBytes) + ">>",
        placeTable());
    put("startxref\n" + std::to_string(start) + "\n%%EOF\n");
    flush();
}

void PDFWriter::put(std::string_view bytes)
{
    m_size += bytes.size();
    if (m_buffer.size() + bytes.size() > bufferSize)
        flush();
    if (bytes.size() > bufferSize)
        m_sink.write(bytes);
    else
        m_buffer += bytes;
}

void PDFWriter::flush()
{
    m_sink.write(m_buffer);
    m_buffer.clear();
}

void PDFWriter::beginObject(int number)
{
    m_places[static_cast<std::size_t>(number)].position = m_size;
    put(std::to_string(number) + " 0 obj\n");
}

void PDFWriter::beginStream(int number, std::string_view entries, std::uint64_t size)
{
    beginObject(number);
    put("<<");
    put(entries);
    put("/Length " + std::to_string(size) + ">>\nstream\n");
}

void PDFWriter::endStream()
{
    put("\nendstream\nendobj\n");
}

void PDFWriter::writeGathered()
{
    if (m_gathered.empty())
        return;
    const int number = newNumber();
    for (std::uint32_t index = 0; index < m_gathered.size(); ++index) {
        m_places[static_cast<std::size_t>(m_gathered[index])]
            = {.isPacked = true, .position = static_cast<std::uint64_t>(number), .index = index};
    }
    packedStream(number,
        "/Type/ObjStm/N " + std::to_string(m_gathered.size()) + "/First " + std::to_string(m_offsets.size()),
        m_offsets + m_bodies);
    m_gathered.clear();
    m_offsets.clear();
    m_bodies.clear();
}

/// The rows of the cross-reference stream, each as its difference to the one above (PNG's predictor "up").
std::string PDFWriter::placeTable() const
{
    constexpr char up = 2;
    constexpr std::uint64_t lastGeneration = 65535;
    std::string table;
    table.reserve(m_places.size() * (rowBytes + 1));
    Row above{};
    for (std::size_t number = 0; number < m_places.size(); ++number) {
        const Place &place = m_places[number];
        const Row row = number == 0 ? tableRow(0, 0, lastGeneration)
                                    : tableRow(place.isPacked ? 2 : 1, place.position, place.index);
        table += up;
        for (std::size_t byte = 0; byte < rowBytes; ++byte)
            table += static_cast<char>(row.at(byte) - above.at(byte));
        above = row;
    }
    return table;
}

} // namespace nolfa
