#include "Watermark/WatermarkSpec.h"

#include <utility>

namespace nolfa {

WatermarkSpec::Pages::Pages(Case value)
    : m_value(std::move(value))
{
}

WatermarkSpec::Pages WatermarkSpec::Pages::range(std::int64_t lower, std::int64_t upper)
{
    return Pages(Range{lower, upper});
}

WatermarkSpec::Pages WatermarkSpec::Pages::indices(std::set<std::int64_t> numbers)
{
    return Pages(Indices{std::move(numbers)});
}

WatermarkSpec::Pages WatermarkSpec::Pages::all()
{
    return Pages(All{});
}

bool WatermarkSpec::Pages::contains(std::int64_t pageNumber) const
{
    if (const auto *const range = std::get_if<Range>(&m_value))
        return range->lower <= pageNumber && pageNumber <= range->upper;
    if (const auto *const indices = std::get_if<Indices>(&m_value))
        return indices->numbers.contains(pageNumber);
    return true;
}

const WatermarkSpec &WatermarkSpec::defaultSpec()
{
    static const WatermarkSpec spec;
    return spec;
}

} // namespace nolfa
