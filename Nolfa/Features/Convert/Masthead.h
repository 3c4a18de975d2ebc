#pragma once

#include "Engine/DocumentFormat.h"

#include <QString>
#include <QStringList>
#include <vector>

namespace nolfa {

/// The lines that name what can be opened.
namespace Masthead {

/// The formats of some families, family by family, joined by " · ".
[[nodiscard]] QString mastheadLine(const std::vector<FormatFamily> &families);

/// The two lines of the convert screen.
[[nodiscard]] QStringList lines();

} // namespace Masthead

} // namespace nolfa
