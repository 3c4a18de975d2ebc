#include "Engine/ItemNumber.h"

#include "Platform/Unicode.h"

#include <algorithm>
#include <array>

namespace nolfa {

namespace {

constexpr long mostRoman = 3999;

std::string letters(long number)
{
    std::string text;
    for (; number > 0; number = (number - 1) / 26)
        text.insert(text.begin(), static_cast<char>('a' + (number - 1) % 26));
    return text;
}

std::string roman(long number)
{
    constexpr std::array<std::pair<long, std::string_view>, 13> signs{
        {{1000, "m"}, {900, "cm"}, {500, "d"}, {400, "cd"}, {100, "c"}, {90, "xc"}, {50, "l"}, {40, "xl"}, {10, "x"},
            {9, "ix"}, {5, "v"}, {4, "iv"}, {1, "i"}}};
    std::string text;
    for (const auto &[value, sign] : signs) {
        for (; number >= value; number -= value)
            text += sign;
    }
    return text;
}

std::string upper(std::string text)
{
    std::ranges::transform(text, text.begin(), [](char c) { return static_cast<char>(c - 'a' + 'A'); });
    return text;
}

} // namespace

std::string itemNumber(long number, std::string_view type)
{
    if (number > 0 && number <= mostRoman) {
        if (type == "a")
            return letters(number);
        if (type == "A")
            return upper(letters(number));
        if (type == "i")
            return roman(number);
        if (type == "I")
            return upper(roman(number));
    }
    return std::to_string(number);
}

bool takeItemNumber(std::string_view &line)
{
    std::string_view rest = line;
    if (!Unicode::takeDigits(rest) || rest.empty() || (rest.front() != '.' && rest.front() != ')'))
        return false;
    rest.remove_prefix(1);
    if (!Unicode::takeWhiteSpace(rest))
        return false;
    line = rest;
    return true;
}

} // namespace nolfa
