#pragma once

#include "Engine/Converter.h"
#include "Engine/PandocRunner.h"

#include <optional>
#include <span>

namespace nolfa {

/// Markdown to PDF: by pandoc and typst where there is a typst, and else, or when that fails, through HTML.
class MarkdownToPDFConverter : public Converter {
public:
    /// @param typst   replaces the search for a typst, unchecked
    /// @param bundle  where a typst, the page template and fonts are
    explicit MarkdownToPDFConverter(
        PandocRunner pandoc, std::optional<std::filesystem::path> typst = std::nullopt, Bundle bundle = Bundle::main());

    [[nodiscard]] std::vector<ConversionPair> pairs() const override;

    void convert(const std::filesystem::path &input, const std::filesystem::path &output, ConversionPair pair,
        std::stop_token stop) const override;

    /// Where a typst may stand that isn't ours, in order of preference.
    static std::span<const std::filesystem::path> systemPlaces();

    /// The bundle's own typst, or else the first of @p places that names an executable file.
    [[nodiscard]] static std::optional<std::filesystem::path> resolveTypst(
        const Bundle &bundle, std::span<const std::filesystem::path> places = systemPlaces());

    /// Whether the file there has a size above 0.
    [[nodiscard]] static bool isUsableOutput(const std::filesystem::path &output);

private:
    [[nodiscard]] bool typeset(const std::filesystem::path &input, const std::filesystem::path &output,
        const std::filesystem::path &engine, const std::stop_token &stop) const;
    void print(
        const std::filesystem::path &input, const std::filesystem::path &output, const std::stop_token &stop) const;

    PandocRunner m_pandoc;
    std::optional<std::filesystem::path> m_typstOverride;
    Bundle m_bundle;
};

} // namespace nolfa
