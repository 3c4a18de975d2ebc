#include "Platform/LocaleFormat.h"

#include <array>
#include <cmath>
#include <memory>
#include <unicode/brkiter.h>
#include <unicode/dtptngen.h>
#include <unicode/formattedvalue.h>
#include <unicode/numberformatter.h>
#include <unicode/rbnf.h>
#include <unicode/smpdtfmt.h>

namespace nolfa::LocaleFormat {

namespace {

struct Unit {
    double size;
    std::int32_t fractionDigits;
    icu::MeasureUnit (*make)();
};

const std::array<Unit, 6> &units()
{
    static const std::array<Unit, 6> table{{{1, 0, icu::MeasureUnit::getByte}, {1e3, 0, icu::MeasureUnit::getKilobyte},
        {1e6, 1, icu::MeasureUnit::getMegabyte}, {1e9, 2, icu::MeasureUnit::getGigabyte},
        {1e12, 2, icu::MeasureUnit::getTerabyte}, {1e15, 2, icu::MeasureUnit::getPetabyte}}};
    return table;
}

icu::Locale icuLocale(const Locale &locale)
{
    if (locale.language.empty())
        return {"en", locale.region.c_str()};
    return {locale.language.c_str(), locale.region.c_str()};
}

/// The smallest unit in which the rounded number stays below a thousand.
const Unit &unitFor(double bytes)
{
    std::size_t index = 0;
    const auto rounded = [&index, bytes] {
        const double scale = std::pow(10, units().at(index).fractionDigits);
        return std::round(bytes / units().at(index).size * scale) / scale;
    };
    while (index + 1 < units().size() && rounded() >= 1000)
        ++index;
    return units().at(index);
}

icu::number::FormattedNumber formatted(double number, const Unit &unit, const icu::Locale &locale, UErrorCode &status)
{
    // Bytes have no short form worth showing.
    const UNumberUnitWidth width = unit.size > 1 ? UNUM_UNIT_WIDTH_SHORT : UNUM_UNIT_WIDTH_FULL_NAME;
    return icu::number::NumberFormatter::withLocale(locale)
        .unit(unit.make())
        .unitWidth(width)
        .precision(icu::number::Precision::minMaxFraction(0, unit.fractionDigits))
        .roundingMode(UNUM_ROUND_HALFUP)
        .formatDouble(number, status);
}

icu::UnicodeString spelledZero(const icu::Locale &locale, UErrorCode &status)
{
    const icu::RuleBasedNumberFormat words(icu::URBNF_SPELLOUT, locale, status);
    icu::UnicodeString zero;
    if (U_SUCCESS(status))
        words.format(std::int64_t{0}, zero, status);
    return zero.toTitle(nullptr, locale);
}

/// "0 kB" with the number in words.
icu::UnicodeString zeroBytes(const icu::Locale &locale, UErrorCode &status)
{
    const icu::number::FormattedNumber number = formatted(0, units()[1], locale, status);
    icu::UnicodeString text = number.toString(status);
    icu::ConstrainedFieldPosition position;
    position.constrainField(UFIELD_CATEGORY_NUMBER, UNUM_INTEGER_FIELD);
    if (U_SUCCESS(status) && number.nextPosition(position, status))
        text.replaceBetween(position.getStart(), position.getLimit(), spelledZero(locale, status));
    return text;
}

std::string utf8(const icu::UnicodeString &text)
{
    std::string result;
    text.toUTF8String(result);
    return result;
}

} // namespace

std::string byteCount(std::int64_t bytes, const Locale &locale)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale target = icuLocale(locale);
    if (bytes == 0)
        return utf8(zeroBytes(target, status));
    const auto number = static_cast<double>(bytes);
    const Unit &unit = unitFor(std::abs(number));
    return utf8(formatted(number / unit.size, unit, target, status).toString(status));
}

std::string longDate(std::chrono::system_clock::time_point date, const Locale &locale)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale target = icuLocale(locale);
    const std::unique_ptr<icu::DateTimePatternGenerator> generator(
        icu::DateTimePatternGenerator::createInstance(target, status));
    icu::UnicodeString text;
    if (U_FAILURE(status))
        return {};
    const icu::UnicodeString pattern = generator->getBestPattern(u"yMMMMd", status);
    const icu::SimpleDateFormat format(pattern, target, status);
    const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(date.time_since_epoch());
    if (U_SUCCESS(status))
        format.format(static_cast<UDate>(milliseconds.count()), text);
    return utf8(text);
}

} // namespace nolfa::LocaleFormat
