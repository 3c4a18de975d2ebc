#pragma once

#include "Arguments.h"
#include "Engine/ConversionService.h"
#include "ExitStatus.h"

#include <ostream>

namespace nolfa::CommandLine {

/// Lists the routes on offer.
ExitStatus runFormats(const ConversionService &service, const FormatsArguments &arguments, std::ostream &out);

} // namespace nolfa::CommandLine
