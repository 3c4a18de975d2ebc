#pragma once

#include "Compare/DocumentComparison.h"
#include "Engine/ConversionService.h"

#include <filesystem>
#include <stop_token>
#include <string>

namespace nolfa {

/// One of the documents of a comparison, brought to Markdown.
struct ComparedText {
    ComparedFile file;
    std::string markdown; ///< UTF-8

    /// Blocks. A PDF gets page markers; links to pictures that the conversion extracted are made relative, so that they
    /// don't differ by the place where that happened.
    /// @param folder  an empty one for what is made on the way
    /// @throws ConversionError::unreadableInput for an unknown format; whatever the conversion lets through
    [[nodiscard]] static ComparedText load(const std::filesystem::path &url, const ConversionService &service,
        const std::filesystem::path &folder, const std::stop_token &stop);

    /// In bytes; of a folder, the sum of its files. 0 for what isn't there or can't be examined.
    [[nodiscard]] static std::int64_t byteSize(const std::filesystem::path &url);

    /// The current time when it can't be read.
    [[nodiscard]] static std::chrono::system_clock::time_point modificationDate(const std::filesystem::path &url);
};

} // namespace nolfa
