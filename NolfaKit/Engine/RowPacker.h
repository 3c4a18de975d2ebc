#pragma once

#include "Platform/Zlib.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace nolfa {

/// Packs rows of samples as PDF's FlateDecode reads them with a PNG predictor (Predictor 15). Not thread-safe.
class RowPacker {
public:
    /// @param step  bytes from a sample to the same one of the next pixel, at least 1
    RowPacker(std::size_t bytesPerRow, std::size_t step);

    void append(std::span<const std::uint8_t> row);

    /// @return the whole stream; once
    [[nodiscard]] std::string finish();

private:
    using Row = std::vector<std::uint8_t>; ///< the filter in front

    std::size_t m_step;
    std::vector<std::uint8_t> m_above;
    std::array<Row, 4> m_candidates; ///< one for each filter that is tried
    Deflater m_deflater;
    std::string m_packed;
};

} // namespace nolfa
