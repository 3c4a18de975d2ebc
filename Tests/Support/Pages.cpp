#include "Support/Pages.h"

#include "Support/Processes.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <sstream>
#include <stdexcept>

namespace nolfa::testing {

PDFDocument openPDF(const std::filesystem::path &file)
{
    std::optional<PDFDocument> document = PDFDocument::open(file);
    if (!document)
        throw std::runtime_error("not a PDF: " + file.string());
    return std::move(*document);
}

std::string textOfPDF(const std::filesystem::path &file)
{
    const PDFDocument document = openPDF(file);
    std::string text;
    for (std::size_t page = 0; page < document.pageCount(); ++page) {
        for (const PDFTextLine &line : document.textLines(page, {}))
            text += line.text + '\n';
    }
    return text;
}

std::vector<std::string> fontsOfPDF(const std::filesystem::path &file)
{
    const ProcessResult result = runProgram("/usr/bin/pdffonts", {file});
    EXPECT_EQ(result.status, 0) << result.stderr;
    std::vector<std::string> names;
    std::istringstream lines(result.stdout);
    for (std::string line; std::getline(lines, line);) {
        const bool isEmbedded = line.find(" yes ") != std::string::npos;
        std::string name = line.substr(0, line.find(' '));
        if (name.find('+') == 6)
            name.erase(0, 7);
        if (isEmbedded)
            names.push_back(name);
    }
    std::ranges::sort(names);
    return names;
}

std::size_t darkPixels(const std::filesystem::path &file, std::size_t page)
{
    constexpr std::uint8_t dark = 128;
    const std::optional<Bitmap> picture = openPDF(file).render(page, 1, {});
    return picture ? static_cast<std::size_t>(
               std::ranges::count_if(picture->pixels, [](std::uint8_t value) { return value < dark; }))
                   : 0;
}

} // namespace nolfa::testing
