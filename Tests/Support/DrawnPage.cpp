#include "Support/DrawnPage.h"

#include "Support/Processes.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sstream>

namespace nolfa::testing {

namespace {

constexpr DrawnPage::Pixel white{255, 255, 255};

/// One picture in the format P6 of Netpbm.
std::optional<DrawnPage> nextPicture(std::istream &stream)
{
    std::string kind;
    DrawnPage page;
    int most = 0;
    if (!(stream >> kind >> page.width >> page.height >> most) || kind != "P6")
        return std::nullopt;
    stream.get();
    page.pixels.resize(static_cast<std::size_t>(page.width) * static_cast<std::size_t>(page.height));
    static_assert(sizeof(DrawnPage::Pixel) == 3);
    stream.read(reinterpret_cast<char *>(page.pixels.data()),
        static_cast<std::streamsize>(page.pixels.size() * sizeof(DrawnPage::Pixel)));
    return stream ? std::optional(std::move(page)) : std::nullopt;
}

bool isAlike(const DrawnPage::Pixel &one, const DrawnPage::Pixel &other)
{
    constexpr int smoothing = 48;
    return std::abs(one.red - other.red) <= smoothing && std::abs(one.green - other.green) <= smoothing
        && std::abs(one.blue - other.blue) <= smoothing;
}

/// Whether a page has that pixel at a place or right beside it.
bool isNear(const DrawnPage::Pixel &pixel, const DrawnPage &page, int x, int y)
{
    if (isAlike(pixel, page.at(x, y)))
        return true;
    for (int row = std::max(y - 1, 0); row <= std::min(y + 1, page.height - 1); ++row) {
        for (int column = std::max(x - 1, 0); column <= std::min(x + 1, page.width - 1); ++column) {
            if (isAlike(pixel, page.at(column, row)))
                return true;
        }
    }
    return false;
}

} // namespace

const DrawnPage::Pixel &DrawnPage::at(int x, int y) const
{
    return pixels.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x));
}

std::optional<DrawnPage::Box> DrawnPage::ink() const
{
    Box box{width, height, -1, -1};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (at(x, y) == white)
                continue;
            box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x), std::max(box.bottom, y)};
        }
    }
    return box.right < 0 ? std::nullopt : std::optional(box);
}

std::vector<DrawnPage> drawnPages(const std::filesystem::path &file, int first, int last, double dotsPerInch)
{
    const ProcessResult result = runProgram("/usr/bin/pdftoppm",
        {"-r", std::to_string(dotsPerInch), "-f", std::to_string(first), "-l", std::to_string(last),
            "-hide-annotations", file});
    std::istringstream stream(result.stdout);
    std::vector<DrawnPage> pages;
    while (std::optional<DrawnPage> page = nextPicture(stream))
        pages.push_back(std::move(*page));
    return pages;
}

DrawnPage drawnPage(const std::filesystem::path &file, int page, double dotsPerInch)
{
    const std::vector<DrawnPage> pages = drawnPages(file, page, page, dotsPerInch);
    EXPECT_EQ(pages.size(), 1U) << file;
    return pages.empty() ? DrawnPage() : pages.front();
}

double difference(const DrawnPage &one, const DrawnPage &other)
{
    if (one.width != other.width || one.height != other.height)
        return 1;
    std::size_t count = 0;
    for (int y = 0; y < one.height; ++y) {
        for (int x = 0; x < one.width; ++x)
            count += isNear(one.at(x, y), other, x, y) && isNear(other.at(x, y), one, x, y) ? 0U : 1U;
    }
    return static_cast<double>(count) / static_cast<double>(std::max<std::size_t>(one.pixels.size(), 1));
}

} // namespace nolfa::testing
