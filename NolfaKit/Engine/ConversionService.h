#pragma once

#include "Engine/Converter.h"
#include "Engine/Fidelity.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <stop_token>
#include <unordered_map>
#include <vector>

namespace nolfa {

/// The one door to conversion: finds the converter, names the output, runs it and verifies that something came
/// out. Immutable; may be copied and used from any thread.
class ConversionService {
public:
    using Converters = std::vector<std::shared_ptr<const Converter>>;

    /// Where two converters list the same pair, the later one serves it.
    explicit ConversionService(const Converters &converters);

    /// In the order of DocumentFormats::allCases; never the source itself, nor a format that can't be produced.
    [[nodiscard]] std::vector<DocumentFormat> supportedTargets(DocumentFormat source) const;

    /// What the full product makes of the pair, on offer here or not.
    [[nodiscard]] std::optional<ConversionCapability> capability(DocumentFormat from, DocumentFormat to) const;

    /// Blocks; call it on a background thread.
    /// @param outputDirectory  an existing folder; absent: the input's own
    /// @return the file written, named after the input's stem, or "stem 2" and so on where that is taken
    /// @throws ConversionError, and whatever else the converter lets through
    [[nodiscard]] std::filesystem::path convert(const std::filesystem::path &input, DocumentFormat target,
        const std::optional<std::filesystem::path> &outputDirectory, std::stop_token stop) const;

private:
    std::unordered_map<ConversionPair, std::shared_ptr<const Converter>> m_registry;
};

} // namespace nolfa
