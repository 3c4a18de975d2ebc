#include "Platform/CNumber.h"

#include <clocale>
#include <cstdlib>
#include <string>

namespace nolfa {

std::optional<double> CNumber::parse(std::string_view text)
{
    // Lives as long as the process.
    static const locale_t locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
    const std::string terminated(text);
    char *end = nullptr;
    const double value = ::strtod_l(terminated.c_str(), &end, locale);
    if (end == terminated.c_str() || end != terminated.c_str() + terminated.size())
        return std::nullopt;
    return value;
}

} // namespace nolfa
