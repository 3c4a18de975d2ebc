#include "WatermarkArguments.h"

#include "Platform/CNumber.h"
#include "UsageError.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string_view>
#include <utility>

namespace nolfa::CommandLine {

namespace {

using Placement = WatermarkSpec::Placement;

constexpr std::array<std::pair<std::string_view, Placement>, 3> placements{{
    {"diagonal", Placement::diagonal},
    {"horizontalCenter", Placement::horizontalCenter},
    {"tiled", Placement::tiled},
}};

double numberFrom(const std::string &option, const std::string &word)
{
    const std::optional<double> value = CNumber::parse(word);
    if (!value || !std::isfinite(*value))
        failUsage(option + " takes a number.", option + " demande un nombre.");
    return *value;
}

double opacityFrom(const std::string &word)
{
    const double value = numberFrom("--opacity", word);
    if (value < 0 || value > 1)
        failUsage("--opacity takes a number from 0 to 1.", "--opacity demande un nombre de 0 à 1.");
    return value;
}

std::uint32_t colorFrom(std::string_view word)
{
    constexpr std::size_t digits = 6;
    constexpr int hexadecimal = 16;
    if (word.starts_with('#'))
        word.remove_prefix(1);
    std::uint32_t value = 0;
    const auto [end, failure] = std::from_chars(word.data(), word.data() + word.size(), value, hexadecimal);
    if (word.size() != digits || failure != std::errc() || end != word.data() + word.size())
        failUsage("--color takes six hexadecimal digits, as in 6E2433.",
            "--color demande six chiffres hexadécimaux, comme 6E2433.");
    return value;
}

Placement placementFrom(std::string_view word)
{
    for (const auto &[name, placement] : placements) {
        if (word == name)
            return placement;
    }
    failUsage(
        "--placement is diagonal, horizontalCenter or tiled.", "--placement vaut diagonal, horizontalCenter ou tiled.");
}

std::optional<std::int64_t> pageNumberFrom(std::string_view word)
{
    std::int64_t value = 0;
    const auto [end, failure] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (failure != std::errc() || end != word.data() + word.size() || value < 1)
        return std::nullopt;
    return value;
}

/// "A-B"
std::optional<WatermarkSpec::Pages> rangeFrom(std::string_view word, std::size_t dash)
{
    const std::optional<std::int64_t> lower = pageNumberFrom(word.substr(0, dash));
    const std::optional<std::int64_t> upper = pageNumberFrom(word.substr(dash + 1));
    if (!lower || !upper || *lower > *upper)
        return std::nullopt;
    return WatermarkSpec::Pages::range(*lower, *upper);
}

/// "1,4,9"
std::optional<WatermarkSpec::Pages> listFrom(std::string_view word)
{
    std::set<std::int64_t> numbers;
    for (;;) {
        const std::size_t comma = word.find(',');
        const std::optional<std::int64_t> number = pageNumberFrom(word.substr(0, comma));
        if (!number)
            return std::nullopt;
        numbers.insert(*number);
        if (comma == std::string_view::npos)
            return WatermarkSpec::Pages::indices(std::move(numbers));
        word.remove_prefix(comma + 1);
    }
}

WatermarkSpec::Pages pagesFrom(std::string_view word)
{
    if (word == "all")
        return WatermarkSpec::Pages::all();
    const std::size_t dash = word.find('-');
    std::optional<WatermarkSpec::Pages> pages = dash == std::string_view::npos ? listFrom(word) : rangeFrom(word, dash);
    if (!pages)
        failUsage("--pages is all, a range such as 2-5, or numbers such as 1,4,9.",
            "--pages vaut all, un intervalle comme 2-5, ou des numéros comme 1,4,9.");
    return std::move(*pages);
}

WatermarkSpec specFrom(const WatermarkWords &words)
{
    WatermarkSpec spec{.text = *words.text};
    if (words.font)
        spec.fontName = *words.font;
    if (words.size)
        spec.fontSize = numberFrom("--size", *words.size);
    if (words.color)
        spec.colorHex = colorFrom(*words.color);
    if (words.opacity)
        spec.opacity = opacityFrom(*words.opacity);
    if (words.angle)
        spec.rotationDegrees = numberFrom("--angle", *words.angle);
    if (words.placement)
        spec.placement = placementFrom(*words.placement);
    if (words.pages)
        spec.pages = pagesFrom(*words.pages);
    if (words.spacing)
        spec.tileSpacing = numberFrom("--spacing", *words.spacing);
    return spec;
}

} // namespace

WatermarkArguments watermarkFrom(const WatermarkWords &words)
{
    if (words.inputs.empty())
        failUsage("No PDF to stamp was given.", "Aucun PDF à tamponner n’a été indiqué.");
    if (words.inputs.size() > 1)
        failUsage("One PDF at a time can be stamped.", "Un seul PDF à la fois peut être tamponné.");
    if (!words.text)
        failUsage("--text TEXT is missing.", "Il manque --text TEXTE.");
    if (words.output.empty())
        failUsage("--output OUT.pdf is missing.", "Il manque --output SORTIE.pdf.");
    return {words.inputs.front(), words.output, specFrom(words)};
}

} // namespace nolfa::CommandLine
