#pragma once

#include "Engine/Converter.h"

#include <functional>

namespace nolfa::testing {

/// A converter that does what the test says.
class StubConverter : public Converter {
public:
    using Work = std::function<void(const std::filesystem::path &input, const std::filesystem::path &output,
        ConversionPair pair, std::stop_token stop)>;

    StubConverter(std::vector<ConversionPair> pairs, Work work)
        : m_pairs(std::move(pairs))
        , m_work(std::move(work))
    {
    }

    [[nodiscard]] std::vector<ConversionPair> pairs() const override { return m_pairs; }

    void convert(const std::filesystem::path &input, const std::filesystem::path &output, ConversionPair pair,
        std::stop_token stop) const override
    {
        m_work(input, output, pair, std::move(stop));
    }

private:
    std::vector<ConversionPair> m_pairs;
    Work m_work;
};

} // namespace nolfa::testing
