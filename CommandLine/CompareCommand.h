#pragma once

#include "Arguments.h"
#include "Engine/ConversionService.h"
#include "ExitStatus.h"

#include <ostream>
#include <stop_token>

namespace nolfa::CommandLine {

/// Compares two documents. Prints the report as Markdown; or the path of the report, when one is to be written; or JSON
/// (docs/comparison-json.md), which then tells that path. A failure's sentence goes to standard error.
ExitStatus runCompare(const ConversionService &service, const CompareArguments &arguments, std::ostream &out,
    const std::stop_token &stop);

} // namespace nolfa::CommandLine
