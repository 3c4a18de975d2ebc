#pragma once

#include "Compare/Change.h"
#include "Engine/DocumentFormat.h"
#include "Engine/Fidelity.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace nolfa {

/// Changes that stand under one heading and on one page.
struct ComparisonSection {
    std::size_t id; ///< position in the list of sections, from 0
    std::optional<std::string> heading; ///< under which the changes stand
    std::optional<std::int64_t> leftPage; ///< the first known in the left document
    std::optional<std::int64_t> rightPage; ///< and in the right one
    std::vector<Change> changes; ///< in the order of the document, never empty

    /// The right page if known, else the left one.
    [[nodiscard]] std::optional<std::int64_t> page() const noexcept;
    /// The page, else the heading, else a word for the whole document.
    [[nodiscard]] std::string title() const;
    [[nodiscard]] std::size_t wordsAdded() const;
    [[nodiscard]] std::size_t wordsRemoved() const;

    bool operator==(const ComparisonSection &) const = default;
};

/// A comparison in numbers.
struct ComparisonSummary {
    std::size_t blocksAdded = 0;
    std::size_t blocksRemoved = 0;
    std::size_t blocksModified = 0;
    std::size_t blocksUnchanged = 0;
    std::size_t wordsAdded = 0;
    std::size_t wordsRemoved = 0;
    double similarity = 1; ///< 0 to 1: the part of all words, of both documents, that no change touches

    [[nodiscard]] std::size_t changeCount() const noexcept { return blocksAdded + blocksRemoved + blocksModified; }
    [[nodiscard]] bool isIdentical() const noexcept { return changeCount() == 0; }

    bool operator==(const ComparisonSummary &) const = default;
};

/// One of the two documents.
struct ComparedFile {
    std::filesystem::path url; ///< as the user chose it
    DocumentFormat format;
    std::int64_t byteSize;
    std::chrono::system_clock::time_point modifiedAt;
    FidelityTier normalizationTier; ///< how faithful its way to Markdown was

    /// The last component, as text for the user.
    [[nodiscard]] std::string name() const;
    /// In the user's language and region.
    /// @{
    [[nodiscard]] std::string sizeText() const;
    [[nodiscard]] std::string modifiedText() const;
    /// @}

    bool operator==(const ComparedFile &) const = default;
};

/// What a comparison yields. A plain value, like all its parts.
struct DocumentComparison {
    ComparedFile left;
    ComparedFile right;
    std::vector<ComparisonSection> sections;
    ComparisonSummary summary;
    std::chrono::system_clock::time_point generatedAt;
    ComparisonOptions options;

    /// Of all sections, in order; they live as long as the comparison.
    [[nodiscard]] std::vector<const Change *> changes() const;
    [[nodiscard]] std::size_t changeCount() const noexcept { return summary.changeCount(); }
    [[nodiscard]] bool isIdentical() const noexcept { return changeCount() == 0; }
    /// On how many different pages there are changes; sections without a page don't count.
    [[nodiscard]] std::size_t pageCount() const;

    bool operator==(const DocumentComparison &) const = default;
};

} // namespace nolfa
