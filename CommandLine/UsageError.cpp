#include "UsageError.h"

#include "Localization/NolfaL10n.h"

namespace nolfa::CommandLine {

void failUsage(std::string en, std::string fr)
{
    throw UsageError(T(std::move(en), std::move(fr)) + T(" See nolfa-cli --help.", " Voyez nolfa-cli --help."));
}

} // namespace nolfa::CommandLine
