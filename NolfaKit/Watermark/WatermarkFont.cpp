#include "Watermark/WatermarkFont.h"

#include "Platform/PlatformError.h"
#include "Platform/Typesetter.h"

#include <algorithm>

namespace nolfa::WatermarkFont {

namespace {

constexpr std::string_view fallback = "Helvetica";

std::string fallbackName()
{
    if (Typesetter::hasFont(fallback))
        return std::string(fallback);
    // Few machines have Helvetica itself; fonts of the same measures stand in for it.
    std::optional<std::string> name = Typesetter::substitute(fallback);
    if (!name)
        throw PlatformError("There is no font on this machine.");
    return std::move(*name);
}

} // namespace

std::vector<std::string> system()
{
    std::vector<std::string> names;
    for (const FontFamily &family : Typesetter::families()) {
        if (!family.name.starts_with('.') && !family.members.empty())
            names.push_back(family.members.front());
    }
    std::ranges::sort(names);
    return names;
}

Font resolve(std::string_view name, double size)
{
    return {Typesetter::hasFont(name) ? std::string(name) : fallbackName(), size};
}

} // namespace nolfa::WatermarkFont
