#include "Engine/CellFormats.h"

#include "Engine/NumberText.h"
#include "Engine/ReadingLimits.h"
#include "Platform/XMLReader.h"

#include <charconv>
#include <cmath>
#include <cstdlib>

namespace nolfa {

namespace {

constexpr std::int64_t secondsPerDay = 86400;

/// Gathers the cell formats; those of named styles stay out.
class CellXfsParser : public XMLHandler {
public:
    void startElement(std::string_view name, const XMLAttributes &attributes) override
    {
        if (name == "cellXfs")
            m_inCellXfs = true;
        if (name != "xf" || !m_inCellXfs)
            return;
        ReadingLimits::require(numberFormats.size(), ReadingLimits::cellFormats);
        numberFormats.push_back(NumberText::integer(attributes.find("numFmtId").value_or("")).value_or(0));
    }
    void endElement(std::string_view name) override
    {
        if (name == "cellXfs")
            m_inCellXfs = false;
    }
    void characters(std::string_view /*text*/) override { }

    std::vector<std::int64_t> numberFormats;

private:
    bool m_inCellXfs = false;
};

/// Appends a number with at least so many digits, as printf's "%0*lld" does.
void appendPadded(std::string &text, std::int64_t number, int width)
{
    if (number < 0) {
        text += '-';
        --width;
    }
    const std::string digits = std::to_string(number < 0 ? -number : number);
    for (auto length = static_cast<int>(digits.size()); length < width; ++length)
        text += '0';
    text += digits;
}

struct Date {
    std::int64_t year;
    int month;
    int day;
};

/// The proleptic Gregorian date of a day counted from 1970-01-01; after Hinnant, "chrono-Compatible Low-Level Date
/// Algorithms", civil_from_days.
Date dateOf(std::int64_t day)
{
    constexpr std::int64_t daysPerEra = 146097;
    constexpr std::int64_t eraOffset = 719468; // from 0000-03-01
    day += eraOffset;
    const std::int64_t era = (day >= 0 ? day : day - (daysPerEra - 1)) / daysPerEra;
    const std::int64_t dayOfEra = day - era * daysPerEra;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
    const auto dayOfMonth = static_cast<int>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
    const auto month = static_cast<int>(monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9);
    return {yearOfEra + era * 400 + (month <= 2 ? 1 : 0), month, dayOfMonth};
}

void appendTime(std::string &text, std::int64_t seconds)
{
    appendPadded(text, seconds / 3600, 2);
    text += ':';
    appendPadded(text, seconds % 3600 / 60, 2);
    text += ':';
    appendPadded(text, seconds % 60, 2);
}

/// The seconds of a serial number, rounded half away from zero; absent when they can't be counted.
std::optional<std::int64_t> secondsOf(double serial)
{
    constexpr double most = 9.0e18;
    const double seconds = std::round(serial * static_cast<double>(secondsPerDay));
    // Written so that a NaN fails too.
    if (!(std::abs(seconds) < most))
        return std::nullopt;
    return static_cast<std::int64_t>(seconds);
}

/// Day 0 of the serial numbers, 1899-12-30, from 1970-01-01.
constexpr std::int64_t firstDay = -25569;

void appendDate(std::string &text, std::int64_t seconds, bool withTime)
{
    std::int64_t day = seconds / secondsPerDay;
    std::int64_t rest = seconds % secondsPerDay;
    if (rest < 0) {
        rest += secondsPerDay;
        --day;
    }
    const Date date = dateOf(day + firstDay);
    appendPadded(text, date.year, 4);
    text += '-';
    appendPadded(text, date.month, 2);
    text += '-';
    appendPadded(text, date.day, 2);
    if (withTime) {
        text += ' ';
        appendTime(text, rest);
    }
}

} // namespace

CellFormats::CellFormats(std::vector<std::int64_t> numberFormats)
    : m_numberFormats(std::move(numberFormats))
{
}

CellFormats CellFormats::fromStyles(const std::optional<std::filesystem::path> &part, const std::stop_token &stop)
{
    CellXfsParser parser;
    if (part)
        XMLReader::read(*part, parser, stop);
    return CellFormats(std::move(parser.numberFormats));
}

CellFormats::Kind CellFormats::kind(std::optional<std::int64_t> style) const
{
    if (!style || *style < 0 || static_cast<std::uint64_t>(*style) >= m_numberFormats.size())
        return Kind::general;
    switch (m_numberFormats[static_cast<std::size_t>(*style)]) {
    case 14:
    case 15:
    case 16:
    case 17:
        return Kind::date;
    case 22:
        return Kind::dateTime;
    case 18:
    case 19:
    case 20:
    case 21:
    case 45:
    case 46:
    case 47:
        return Kind::time;
    default:
        return Kind::general;
    }
}

void CellFormats::appendRendered(std::string &text, std::string_view value, Kind kind)
{
    const std::optional<double> serial = kind == Kind::general ? std::nullopt : NumberText::number(value);
    if (!serial) {
        text += value;
        return;
    }
    double whole = 0;
    const std::optional<std::int64_t> seconds
        = secondsOf(kind == Kind::time && std::isfinite(*serial) ? std::modf(*serial, &whole) : *serial);
    if (!seconds)
        text += value;
    else if (kind == Kind::time)
        appendTime(text, *seconds);
    else
        appendDate(text, *seconds, kind == Kind::dateTime);
}

std::string CellFormats::render(std::string_view value, Kind kind)
{
    std::string text;
    appendRendered(text, value, kind);
    return text;
}

} // namespace nolfa
