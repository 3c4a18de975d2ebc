#pragma once

#include "Engine/ConversionService.h"

#include <filesystem>
#include <optional>
#include <stop_token>
#include <vector>

namespace nolfa {

/// What the convert tool asks of the engine. Immutable; may be used from any thread.
class DocumentConverting {
public:
    DocumentConverting() = default;
    DocumentConverting(const DocumentConverting &) = delete;
    DocumentConverting &operator=(const DocumentConverting &) = delete;
    virtual ~DocumentConverting() = default;

    /// As ConversionService has it.
    [[nodiscard]] virtual std::vector<DocumentFormat> supportedTargets(DocumentFormat source) const = 0;

    /// As ConversionService has it: blocks, on a background thread.
    [[nodiscard]] virtual std::filesystem::path convert(const std::filesystem::path &input, DocumentFormat target,
        const std::optional<std::filesystem::path> &outputDirectory, std::stop_token stop) const = 0;
};

/// The engine's own service.
class EngineConverting : public DocumentConverting {
public:
    explicit EngineConverting(ConversionService service);

    [[nodiscard]] std::vector<DocumentFormat> supportedTargets(DocumentFormat source) const override;
    [[nodiscard]] std::filesystem::path convert(const std::filesystem::path &input, DocumentFormat target,
        const std::optional<std::filesystem::path> &outputDirectory, std::stop_token stop) const override;

private:
    ConversionService m_service;
};

} // namespace nolfa
