#pragma once

#include "Platform/Geometry.h"

#include <filesystem>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace nolfa {

/// Lays HTML out on pages and writes them as a PDF. What the layout engine needs prepared is PrintableHTML's to do.
namespace HTMLPrinter {

/// An `img` with this and an index as its source shows one of the job's pictures; no other source shows anything.
inline constexpr std::string_view pictureScheme = "picture:";

/// Characters that enclose, at the start of a list item, what stands in the place of its bullet or number.
inline constexpr std::string_view markerStart = "\uE000";
inline constexpr std::string_view markerEnd = "\uE001";

struct Job {
    std::string_view html; ///< UTF-8
    const std::vector<std::string> &pictures; ///< encoded files: PNG, JPEG, and so on
    Size page; ///< points
    double margin = 0; ///< points, on all four sides
    std::vector<std::filesystem::path> fonts; ///< folders of fonts to use before those of the machine
    std::filesystem::path output; ///< is written over; a failure may leave it half-written
};

/// Blocks. A picture that can't be decoded shows its alternative text. Opens no file but the fonts and the output,
/// and no connection, whatever the HTML names. Thread-safe: any number may run at the same time.
/// @throws PlatformError; CancellationError after a stop, which is looked at before the layout and once a page
void print(const Job &job, const std::stop_token &stop);

} // namespace HTMLPrinter

} // namespace nolfa
