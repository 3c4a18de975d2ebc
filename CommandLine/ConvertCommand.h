#pragma once

#include "Arguments.h"
#include "Engine/ConversionService.h"
#include "ExitStatus.h"

#include <ostream>
#include <stop_token>

namespace nolfa::CommandLine {

/// Converts all inputs, several at once, and prints each output's path in the order of the inputs. The sentence of
/// each failure goes to standard error, and the others go on.
/// @param showsProgress  on standard error
ExitStatus runConvert(const ConversionService &service, const ConvertArguments &arguments, bool showsProgress,
    std::ostream &out, const std::stop_token &stop);

} // namespace nolfa::CommandLine
