#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace nolfa::LocalPictures {

/// HTML with the pictures that it names as files put into it, as data: addresses. A file that isn't there, a remote
/// address and whatever is too much (64 MiB for one picture, 96 MiB for all) stay as they were. Nothing is fetched.
/// @param folder  where relative names lead from
[[nodiscard]] std::string embedded(std::string_view html, const std::filesystem::path &folder);

} // namespace nolfa::LocalPictures
