#pragma once

#include "Engine/ConversionPair.h"

#include <filesystem>
#include <stop_token>
#include <vector>

namespace nolfa {

/// Turns files of one format into another. Implementations are immutable: one instance may run any number of
/// conversions at the same time, from any thread.
class Converter {
public:
    Converter() = default;
    Converter(const Converter &) = default;
    Converter &operator=(const Converter &) = delete;
    virtual ~Converter() = default;

    /// What this instance serves.
    [[nodiscard]] virtual std::vector<ConversionPair> pairs() const = 0;

    /// Blocks until @p output stands at exactly that path, which named nothing before.
    /// @param input   absolute path; never written to
    /// @param output  absolute path in a folder that exists
    /// @param pair    what to do; file names don't decide it
    /// @throws ConversionError; file-system errors and CancellationError may pass as well.
    virtual void convert(const std::filesystem::path &input, const std::filesystem::path &output, ConversionPair pair,
        std::stop_token stop) const = 0;
};

} // namespace nolfa
