#pragma once

#include "Watermark/WatermarkSpec.h"

#include <filesystem>
#include <string>
#include <vector>

namespace nolfa::CommandLine {

struct WatermarkArguments {
    std::filesystem::path input;
    std::filesystem::path output;
    WatermarkSpec spec;
};

/// The words of the verb as they were typed. What is absent stays as `WatermarkSpec` begins.
struct WatermarkWords {
    std::vector<std::string> inputs;
    std::optional<std::string> text;
    std::string output;
    std::optional<std::string> font;
    std::optional<std::string> size;
    std::optional<std::string> color;
    std::optional<std::string> opacity;
    std::optional<std::string> angle;
    std::optional<std::string> placement;
    std::optional<std::string> pages;
    std::optional<std::string> spacing;
};

/// @throws UsageError
[[nodiscard]] WatermarkArguments watermarkFrom(const WatermarkWords &words);

} // namespace nolfa::CommandLine
