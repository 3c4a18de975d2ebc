#pragma once

#include "Platform/Typesetter.h"

namespace nolfa::LineTypesetter {

/// As Typesetter::line.
[[nodiscard]] TypesetLine line(std::string_view text, std::string_view postScriptName, const Colour &colour);

} // namespace nolfa::LineTypesetter
