#include "Check.h"

#include "Platform/JSON.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (const std::optional<nolfa::JSON> json = nolfa::JSON::parse(textOf(data, size)))
        check(nolfa::JSON::parse(json->text()).has_value());
    return 0;
}
