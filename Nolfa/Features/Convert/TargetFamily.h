#pragma once

#include "Engine/DocumentFormat.h"

#include <QString>
#include <array>

namespace nolfa {

/// How the choice of a target is parted.
enum class TargetFamily { documents, presentations, spreadsheets, text };

namespace TargetFamilies {

inline constexpr std::array allCases{
    TargetFamily::documents, TargetFamily::presentations, TargetFamily::spreadsheets, TargetFamily::text};

[[nodiscard]] TargetFamily of(DocumentFormat target);

} // namespace TargetFamilies

/// In the language in force.
[[nodiscard]] QString title(TargetFamily family);

} // namespace nolfa
