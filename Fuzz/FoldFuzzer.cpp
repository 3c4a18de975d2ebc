#include "Check.h"

#include "Compare/TextFold.h"
#include "Platform/Unicode.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace nolfa;
    if (size == 0)
        return 0;
    const bool whitespace = (data[0] & 1U) != 0;
    const bool letterCase = (data[0] & 2U) != 0;
    const bool markers = (data[0] & 4U) != 0;
    const std::string_view text = textOf(data + 1, size - 1);
    const std::string folded = TextFold::fold(text, whitespace, letterCase, markers);
    check(Unicode::trimmed(folded) == folded);
    // Lower-casing may lengthen a letter, and broken bytes become a whole character.
    check(folded.size() <= 3 * text.size());
    check(!Unicode::isValidUTF8(text) || Unicode::isValidUTF8(folded));
    check(TextFold::loose(text) == TextFold::fold(text, true, true, true));
    if (markers) {
        // A marker that is left is part of a larger character.
        bool isASCII = true;
        for (const char c : text)
            isASCII = isASCII && static_cast<unsigned char>(c) < 0x80;
        check(!isASCII || folded.find_first_of("*_`~") == std::string::npos);
    }
    return 0;
}
