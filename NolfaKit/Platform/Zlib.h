#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace nolfa {

/// Unpacks one stream in zlib's format, piece by piece. Not thread-safe.
class Inflater {
public:
    /// @throws PlatformError when there is no memory
    Inflater();
    ~Inflater();

    struct Step {
        std::size_t taken; ///< bytes from the front of the input
        std::size_t made; ///< bytes at the front of the output
        bool isAtEnd; ///< the stream's checksum was read, and was right
    };

    /// Goes on until the input is used up, the output is full, or the stream ends.
    /// @throws PlatformError when the stream is damaged
    [[nodiscard]] Step inflate(std::string_view input, std::span<unsigned char> output);

private:
    struct Stream;
    std::unique_ptr<Stream> m_stream;
};

/// Packs one stream in zlib's format. Not thread-safe.
class Deflater {
public:
    /// @throws PlatformError when there is no memory
    Deflater();
    ~Deflater();

    /// Takes these bytes; what is packed so far goes behind @p output.
    void append(std::span<const unsigned char> bytes, std::string &output);

    /// What is left goes behind @p output.
    void finish(std::string &output);

private:
    struct Stream;
    std::unique_ptr<Stream> m_stream;
};

/// As zip and PNG use it.
[[nodiscard]] unsigned long crc32Of(std::string_view bytes) noexcept;

} // namespace nolfa
