#pragma once

#include "Engine/ConversionService.h"
#include "Platform/Bundle.h"

namespace nolfa {

/// The assembly point: the one place that knows all converters and decides which of them serves which pair.
namespace NolfaEngine {

/// Touches the disc only to look up the tools and resources of @p bundle. Pairs whose tool is missing aren't on
/// offer. Thread-safe.
[[nodiscard]] ConversionService makeService(const Bundle &bundle);

/// Whether a pandoc is found for the application's own bundle.
[[nodiscard]] bool isPandocAvailable();

} // namespace NolfaEngine

} // namespace nolfa
