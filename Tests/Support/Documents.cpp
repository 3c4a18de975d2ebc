#include "Support/Documents.h"

#include "Engine/PandocRunner.h"
#include "Support/Processes.h"
#include "Support/ZipBuilder.h"

#include <array>
#include <cstdint>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace nolfa::testing {

namespace fs = std::filesystem;

namespace {

void appendNumber(std::string &bytes, std::uint32_t number)
{
    for (const unsigned shift : {24U, 16U, 8U, 0U})
        bytes += static_cast<char>(number >> shift & 0xFFU);
}

std::uint32_t adler(std::string_view bytes)
{
    constexpr std::uint32_t prime = 65521;
    std::uint32_t low = 1;
    std::uint32_t high = 0;
    for (const char byte : bytes) {
        low = (low + static_cast<unsigned char>(byte)) % prime;
        high = (high + low) % prime;
    }
    return high << 16U | low;
}

/// A zlib stream without compression.
std::string stored(std::string_view bytes)
{
    constexpr std::size_t most = 65535;
    std::string result = "\x78\x01";
    for (std::size_t start = 0; start == 0 || start < bytes.size(); start += most) {
        const std::string_view block = bytes.substr(start, most);
        const auto size = static_cast<std::uint32_t>(block.size());
        result += start + most >= bytes.size() ? '\1' : '\0';
        for (const std::uint32_t word : {size, ~size}) {
            result += static_cast<char>(word & 0xFFU);
            result += static_cast<char>(word >> 8U & 0xFFU);
        }
        result += block;
    }
    appendNumber(result, adler(bytes));
    return result;
}

void appendChunk(std::string &file, std::string_view kind, std::string_view content)
{
    appendNumber(file, static_cast<std::uint32_t>(content.size()));
    std::string body(kind);
    body += content;
    file += body;
    appendNumber(file, crc32(body));
}

constexpr std::string_view reportText = R"(---
title: Rapport d’été
author: Zoé Lefèvre
---

# Résumé

Le *chiffre d’affaires* progresse de **12 %** sur l’année[^source] ; voir [le site](https://example.org/été).

[^source]: Comptes arrêtés au 31 août, « avant impôt ».

## Points à suivre

1. Embaucher
   - deux rédactrices
     - à Liège
     - à Québec
   - un œnologue
2. Déménager

> Qui va à la chasse perd sa place.

| Région | Ventes | Écart |
|:-------|-------:|:-----:|
| Nord   | 1 200  | +3 %  |
| Sud    | 980    | −1 %  |

![La courbe des ventes](curve.png)

Un détail : ![détail](detail.png) et du `code`.

```
total = somme(ventes)
```
)";

} // namespace

std::string png(unsigned width, unsigned height, unsigned seed)
{
    std::string header;
    appendNumber(header, width);
    appendNumber(header, height);
    header += std::string("\x08\x02\0\0\0", 5); // 8 bits, RGB
    std::string pixels;
    for (unsigned y = 0; y < height; ++y) {
        pixels += '\0'; // no filter
        for (unsigned x = 0; x < width; ++x) {
            pixels += static_cast<char>(x * 255 / width);
            pixels += static_cast<char>(y * 255 / height);
            pixels += static_cast<char>((x ^ y ^ seed) & 0xFFU);
        }
    }
    std::string file = "\x89PNG\r\n\x1A\n";
    appendChunk(file, "IHDR", header);
    appendChunk(file, "IDAT", stored(pixels));
    appendChunk(file, "IEND", "");
    return file;
}

fs::path pandocDocument(const fs::path &folder, std::string_view name, std::string_view text)
{
    fs::path document = folder / name;
    PandocRunner::resolve(Bundle::main())->run({"-f", "markdown", "-o", document}, text, std::stop_token(), folder);
    return document;
}

fs::path reportDocx(const fs::path &folder, std::string_view name)
{
    // The pictures are the document's; nothing of them stays beside it.
    const fs::path sources = folder / "sources-of-the-report";
    fs::create_directories(sources);
    std::ofstream(sources / "curve.png", std::ios::binary) << png(160, 90, 1);
    std::ofstream(sources / "detail.png", std::ios::binary) << png(24, 24, 2);
    const fs::path made = pandocDocument(sources, "made.docx", reportText);
    fs::path document = folder / name;
    fs::rename(made, document);
    fs::remove_all(sources);
    return document;
}

fs::path officeDocument(const fs::path &folder, const fs::path &source, const std::string &format)
{
    const std::string extension = format.substr(0, format.find(':'));
    const fs::path output = folder / ("office-" + extension);
    const ProcessResult result = runProgram("/usr/bin/soffice",
        {"-env:UserInstallation=file://" + (folder / "office-profile").string(), "--headless", "--convert-to", format,
            "--outdir", output, source});
    fs::path document = output / (source.stem().string() + "." + extension);
    EXPECT_TRUE(fs::exists(document)) << result.stdout << result.stderr;
    return document;
}

std::string partOf(const fs::path &package, std::string_view part)
{
    return runProgram("/usr/bin/unzip", {"-p", package, std::string(part)}).stdout;
}

std::vector<std::string> partsOf(const fs::path &package)
{
    std::istringstream list(runProgram("/usr/bin/unzip", {"-Z1", package}).stdout);
    std::vector<std::string> names;
    for (std::string name; std::getline(list, name);)
        names.push_back(name);
    return names;
}

} // namespace nolfa::testing
