#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace nolfa {

/// The attributes of all elements of one name in an XML part, in document order, however deep. Thread-safe.
namespace ElementCollector {

using Attributes = std::map<std::string, std::string, std::less<>>;

/// @param part  absent, or a file that can't be opened: an empty list; a malformed one: what stood before the error
[[nodiscard]] std::vector<Attributes> collect(
    std::string_view name, const std::optional<std::filesystem::path> &part, const std::stop_token &stop);

/// The value of an attribute, if there is one.
[[nodiscard]] std::optional<std::string> value(const Attributes &attributes, std::string_view name);

/// From the Id to the Target of a part's relationships; the last of a repeated Id stands.
[[nodiscard]] std::map<std::string, std::string, std::less<>> relationshipTargets(
    const std::optional<std::filesystem::path> &part, const std::stop_token &stop);

} // namespace ElementCollector

} // namespace nolfa
