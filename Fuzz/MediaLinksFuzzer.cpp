#include "Check.h"

#include "Engine/MediaLinks.h"

#include <string>

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string destination = nolfa::MediaLinks::destination(textOf(data, size));
    check(destination.find_first_of(" \n()<>\"\\|") == std::string::npos);
    check(destination.size() >= size && destination.size() <= 3 * size);
    return 0;
}
