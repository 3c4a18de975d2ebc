#pragma once

#include "Compare/ComparisonReport.h"
#include "Engine/DocumentFormat.h"
#include "Localization/NolfaFormat.h"
#include "Localization/NolfaL10n.h"
#include "UsageError.h"
#include "WatermarkArguments.h"

#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace nolfa::CommandLine {

struct ConvertArguments {
    std::vector<std::filesystem::path> inputs;
    DocumentFormat target = DocumentFormat::markdown;
    std::optional<std::filesystem::path> outputDirectory;
    unsigned jobs = 1;
};

struct ReportArguments {
    std::filesystem::path file; ///< as the user named it; a free name beside it where that is taken
    ReportFormat format = ReportFormat::markdown;
};

struct CompareArguments {
    std::filesystem::path original;
    std::filesystem::path revised;
    std::optional<ReportArguments> report;
    bool asJSON = false;
};

struct FormatsArguments {
    bool asJSON = false;
};

/// Text to print instead of working.
struct PrintArguments {
    std::string text;
};

/// What the user wants, ready to be carried out.
struct Arguments {
    std::variant<PrintArguments, ConvertArguments, CompareArguments, FormatsArguments, WatermarkArguments> verb;
    bool isQuiet = false;
    std::optional<NolfaFormat::Paper> paper;
};

/// The language that the arguments ask for, found before they are parsed because help and errors are written in it.
/// A value that means nothing is left to parse().
[[nodiscard]] NolfaLanguage languageIn(const std::vector<std::string> &arguments);

/// @param arguments  without the program's name
/// @throws UsageError
[[nodiscard]] Arguments parse(const std::vector<std::string> &arguments);

} // namespace nolfa::CommandLine
