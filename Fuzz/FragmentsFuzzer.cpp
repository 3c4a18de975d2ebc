#include "Check.h"

#include "Engine/PDFTextExtraction.h"
#include "Platform/Unicode.h"

#include <cstdint>
#include <cstring>

namespace {

/// Fragments from bytes: four numbers of 16 bits for the box, then text up to a zero.
std::vector<nolfa::RecognizedFragment> fragmentsOf(const std::uint8_t *data, std::size_t size)
{
    std::vector<nolfa::RecognizedFragment> fragments;
    while (size > 8) {
        std::int16_t numbers[4];
        std::memcpy(numbers, data, sizeof numbers);
        data += sizeof numbers;
        size -= sizeof numbers;
        const std::size_t length = ::strnlen(reinterpret_cast<const char *>(data), size);
        const std::string text(reinterpret_cast<const char *>(data), length);
        fragments.push_back({text, {numbers[0] / 100.0, numbers[1] / 100.0, numbers[2] / 100.0, numbers[3] / 100.0}});
        data += length + (length < size ? 1 : 0);
        size -= length + (length < size ? 1 : 0);
    }
    return fragments;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace nolfa;
    const std::vector<RecognizedFragment> fragments = fragmentsOf(data, size);
    std::size_t kept = 0;
    std::size_t bytes = 0;
    for (const RecognizedFragment &fragment : fragments) {
        const std::string_view text = Unicode::trimmed(fragment.text);
        kept += text.empty() ? 0 : 1;
        bytes += text.size();
    }
    // Every fragment is in just one line, with one blank between those of a line.
    const std::vector<PDFTextExtraction::Line> lines = PDFTextExtraction::lines(fragments);
    std::size_t inLines = lines.size();
    for (const PDFTextExtraction::Line &line : lines)
        inLines += line.text.size();
    check(lines.size() <= kept);
    check(inLines == bytes + kept);
    const std::string markdown = PDFTextExtraction::markdown(fragments);
    check(Unicode::trimmed(markdown).size() == markdown.size());
    check(markdown.empty() == lines.empty());
    return 0;
}
