#include "Part.h"

#include "Engine/SlideTextParser.h"
#include "Platform/Unicode.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    for (const std::string &paragraph : nolfa::SlideTextParser::parse(partOf(data, size), {}))
        check(!paragraph.empty() && nolfa::Unicode::trimmed(paragraph) == paragraph);
    return 0;
}
