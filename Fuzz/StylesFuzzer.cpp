#include "Part.h"

#include "Engine/CellFormats.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using nolfa::CellFormats;
    const CellFormats formats = CellFormats::fromStyles(partOf(data, size), {});
    for (std::int64_t style = -1; style < 20; ++style)
        check(!CellFormats::render("45000.5", formats.kind(style)).empty());
    const std::string_view value = textOf(data, size);
    check(CellFormats::render(value, CellFormats::Kind::general) == value);
    for (const CellFormats::Kind kind : {CellFormats::Kind::date, CellFormats::Kind::time, CellFormats::Kind::dateTime})
        check(CellFormats::render(value, kind).empty() == value.empty());
    return 0;
}
