#pragma once

#include "ExitStatus.h"
#include "WatermarkArguments.h"

#include <ostream>
#include <stop_token>

namespace nolfa::CommandLine {

/// Stamps one PDF and prints the path of the copy. The sentence of a failure goes to standard error.
ExitStatus runWatermark(const WatermarkArguments &arguments, std::ostream &out, const std::stop_token &stop);

} // namespace nolfa::CommandLine
