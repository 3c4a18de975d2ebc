#pragma once

#include "Platform/Bundle.h"

#include <filesystem>
#include <string>
#include <vector>

namespace nolfa::TypesettingFolder {

/// Makes a scratch folder the place where pandoc lets typst work: pandoc leaves files of its own in the folder where
/// it runs, which must not be the user's. Puts a page template for the paper of the moment there, if @p bundle has one.
/// @param text  the folder of the text, from which its pictures are named; absolute
/// @return what the run's environment must hold
/// @throws std::filesystem::filesystem_error
[[nodiscard]] std::vector<std::string> prepare(
    const std::filesystem::path &folder, const std::filesystem::path &text, const Bundle &bundle);

} // namespace nolfa::TypesettingFolder
