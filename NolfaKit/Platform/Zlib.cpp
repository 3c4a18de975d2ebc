#include "Platform/Zlib.h"

#include "Platform/PlatformError.h"

#include <algorithm>
#include <array>
#include <limits>
#include <zlib.h>

namespace nolfa {

namespace {

/// zlib counts in 32 bits; what is left comes in the next step.
unsigned int count(std::size_t size)
{
    return static_cast<unsigned int>(std::min<std::size_t>(size, std::numeric_limits<unsigned int>::max()));
}

} // namespace

struct Inflater::Stream {
    z_stream z{};
};

Inflater::Inflater()
    : m_stream(std::make_unique<Stream>())
{
    if (inflateInit(&m_stream->z) != Z_OK)
        throw PlatformError("zlib can't start");
}

Inflater::~Inflater()
{
    inflateEnd(&m_stream->z);
}

Inflater::Step Inflater::inflate(std::string_view input, std::span<unsigned char> output)
{
    z_stream &z = m_stream->z;
    // zlib promises not to write there.
    z.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(input.data()));
    z.avail_in = count(input.size());
    z.next_out = output.data();
    z.avail_out = count(output.size());
    const unsigned int offered = z.avail_in;
    const unsigned int room = z.avail_out;
    const int result = ::inflate(&z, Z_NO_FLUSH);
    if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR)
        throw PlatformError(z.msg == nullptr ? "damaged data" : z.msg);
    return {offered - z.avail_in, room - z.avail_out, result == Z_STREAM_END};
}

struct Deflater::Stream {
    z_stream z{};
    std::array<unsigned char, 1U << 16U> buffer{};

    void run(int flush, std::string &output)
    {
        do {
            z.next_out = buffer.data();
            z.avail_out = count(buffer.size());
            ::deflate(&z, flush);
            output.append(reinterpret_cast<const char *>(buffer.data()), buffer.size() - z.avail_out);
        } while (z.avail_out == 0);
    }
};

Deflater::Deflater()
    : m_stream(std::make_unique<Stream>())
{
    // Rows that went through a predictor gain little from a longer search, and it takes three times as long.
    constexpr int level = 5;
    constexpr int mostMemory = 9;
    constexpr int window = 15;
    if (deflateInit2(&m_stream->z, level, Z_DEFLATED, window, mostMemory, Z_DEFAULT_STRATEGY) != Z_OK)
        throw PlatformError("zlib can't start");
}

Deflater::~Deflater()
{
    deflateEnd(&m_stream->z);
}

void Deflater::append(std::span<const unsigned char> bytes, std::string &output)
{
    while (!bytes.empty()) {
        z_stream &z = m_stream->z;
        z.next_in = const_cast<Bytef *>(bytes.data());
        z.avail_in = count(bytes.size());
        bytes = bytes.subspan(z.avail_in);
        m_stream->run(Z_NO_FLUSH, output);
    }
}

void Deflater::finish(std::string &output)
{
    m_stream->run(Z_FINISH, output);
}

unsigned long crc32Of(std::string_view bytes) noexcept
{
    return ::crc32_z(0, reinterpret_cast<const Bytef *>(bytes.data()), bytes.size());
}

} // namespace nolfa
