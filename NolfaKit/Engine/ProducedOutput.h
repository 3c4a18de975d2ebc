#pragma once

#include "Engine/DocumentFormat.h"

#include <filesystem>
#include <initializer_list>
#include <vector>

namespace nolfa {

/// Whether a conversion left something usable. Thread-safe; deletes nothing.
namespace ProducedOutput {

/// A file with content, or a folder with at least one entry. What can't be examined counts as empty.
[[nodiscard]] bool isUsable(const std::filesystem::path &output);

/// @throws ConversionError::emptyResult of the two formats when isUsable() says no
void require(const std::filesystem::path &output, DocumentFormat from, DocumentFormat to);

} // namespace ProducedOutput

/// Sees to it that work which ends in a failure leaves nothing half-made behind. What stood at a path before the
/// work began is never touched.
class UnfinishedOutput {
public:
    /// @param paths  files and folders that the work may make
    explicit UnfinishedOutput(std::initializer_list<std::filesystem::path> paths);
    UnfinishedOutput(const UnfinishedOutput &) = delete;
    UnfinishedOutput &operator=(const UnfinishedOutput &) = delete;
    ~UnfinishedOutput();

    /// The work is done: everything stays.
    void keep() noexcept { m_paths.clear(); }

private:
    std::vector<std::filesystem::path> m_paths;
};

} // namespace nolfa
