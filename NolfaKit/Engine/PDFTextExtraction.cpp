#include "Engine/PDFTextExtraction.h"

#include "Platform/Unicode.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace nolfa::PDFTextExtraction {

namespace {

// How much higher than most a line is that counts as a heading.
constexpr double firstHeading = 1.6;
constexpr double secondHeading = 1.3;

using Band = std::vector<const RecognizedFragment *>;

double mean(const std::vector<double> &values)
{
    return std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

double medianHeight(const Band &fragments)
{
    std::vector<double> heights;
    heights.reserve(fragments.size());
    for (const RecognizedFragment *fragment : fragments)
        heights.push_back(fragment->boundingBox.height);
    return median(std::move(heights)).value_or(0);
}

/// Fragments from the top of the page downwards, cut where the next one lies too far below the open band's centre.
/// The centre moves as fragments join; nothing returns to a band that is closed.
std::vector<Band> bands(const Band &sorted, double tolerance)
{
    std::vector<Band> result;
    std::vector<double> centres;
    double bandCentre = 0;
    for (const RecognizedFragment *fragment : sorted) {
        const double centre = fragment->boundingBox.centreY();
        if (result.empty() || std::abs(centre - bandCentre) > tolerance) {
            result.emplace_back();
            centres.clear();
        }
        result.back().push_back(fragment);
        centres.push_back(centre);
        bandCentre = mean(centres);
    }
    return result;
}

Line line(Band band)
{
    std::ranges::stable_sort(band, {}, [](const RecognizedFragment *fragment) { return fragment->boundingBox.x; });
    Line line{{}, medianHeight(band)};
    for (const RecognizedFragment *fragment : band) {
        if (fragment != band.front())
            line.text += ' ';
        line.text += Unicode::trimmed(fragment->text);
    }
    return line;
}

} // namespace

std::optional<double> median(std::vector<double> values)
{
    if (values.empty())
        return std::nullopt;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

std::vector<Line> lines(const std::vector<RecognizedFragment> &fragments)
{
    Band kept;
    for (const RecognizedFragment &fragment : fragments) {
        if (!Unicode::trimmed(fragment.text).empty())
            kept.push_back(&fragment);
    }
    const double tolerance = bandTolerance * medianHeight(kept);
    std::ranges::stable_sort(kept, std::ranges::greater{},
        [](const RecognizedFragment *fragment) { return fragment->boundingBox.centreY(); });
    std::vector<Line> result;
    for (Band &band : bands(kept, tolerance))
        result.push_back(line(std::move(band)));
    return result;
}

std::string markdown(const std::vector<RecognizedFragment> &fragments)
{
    Band all;
    for (const RecognizedFragment &fragment : fragments)
        all.push_back(&fragment);
    const double bodyHeight = medianHeight(all);
    std::string text;
    for (const Line &line : lines(fragments)) {
        if (bodyHeight > 0 && line.height >= bodyHeight * firstHeading)
            text += "\n# " + line.text + "\n\n";
        else if (bodyHeight > 0 && line.height >= bodyHeight * secondHeading)
            text += "\n## " + line.text + "\n\n";
        else
            text += line.text + "\n";
    }
    return std::string(Unicode::trimmed(text));
}

} // namespace nolfa::PDFTextExtraction
