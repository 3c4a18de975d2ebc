#pragma once

#include "Compare/DocumentComparison.h"

#include <array>
#include <filesystem>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>

namespace nolfa {

/// What a report can be.
enum class ReportFormat { pdf, markdown };

namespace ReportFormats {

inline constexpr std::array allCases{ReportFormat::pdf, ReportFormat::markdown};

} // namespace ReportFormats

/// "pdf" or "markdown"; also the identity in lists.
[[nodiscard]] std::string_view rawValue(ReportFormat format);
/// What the user reads.
[[nodiscard]] std::string_view title(ReportFormat format);
/// Without a dot.
[[nodiscard]] std::string_view fileExtension(ReportFormat format);

/// A comparison as a document to keep, in the language in force at the moment of the call. Thread-safe.
namespace ComparisonReport {

/// Blocks.
/// @param to  is replaced; a failure or a stop leaves it as it was
/// @throws std::filesystem::filesystem_error; ConversionError and CancellationError
void write(const DocumentComparison &comparison, const std::filesystem::path &to, ReportFormat as,
    const std::stop_token &stop = {});

/// The left file's name, with a word that says what it is.
[[nodiscard]] std::string suggestedName(const DocumentComparison &comparison, ReportFormat format);

/// What is said instead of changes when there are none.
[[nodiscard]] std::string identicalMessage();

/// The report as Markdown. The documents' text isn't escaped.
[[nodiscard]] std::string markdown(const DocumentComparison &comparison);

/// The report as a page for NativePDF.
[[nodiscard]] std::string html(const DocumentComparison &comparison);

} // namespace ComparisonReport

} // namespace nolfa
