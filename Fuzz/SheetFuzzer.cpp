#include "Part.h"

#include "Engine/ConversionError.h"
#include "Engine/SheetParser.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace nolfa;
    static const SharedStrings shared({"zero", "one|pipe", "two\nlines"});
    static const CellFormats formats({0, 14, 22, 20});
    const SheetRows rows = SheetParser::parse(partOf(data, size), shared, formats, {});
    if (rows.isEmpty())
        return 0;
    try {
        std::string text;
        rows.appendTable(text, [&text] {
            if (text.size() > 1U << 22U)
                throw ConversionError::cancelled();
        });
        // What is written row by row is what the whole table gives.
        check(text == MarkdownTable::render(rows.denseRows()));
    } catch (const ConversionError &) {
        // Refused for its size.
    }
    return 0;
}
