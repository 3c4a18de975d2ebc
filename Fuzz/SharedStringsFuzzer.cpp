#include "Part.h"

#include "Engine/SharedStrings.h"
#include "Platform/Unicode.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const nolfa::SharedStrings strings = nolfa::SharedStrings::read(partOf(data, size), {});
    for (std::size_t index = 0; index < strings.size(); ++index)
        check(nolfa::Unicode::isValidUTF8(strings[index]));
    return 0;
}
