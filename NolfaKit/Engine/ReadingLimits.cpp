#include "Engine/ReadingLimits.h"

#include "Engine/ConversionError.h"
#include "Localization/NolfaL10n.h"

namespace nolfa {

void ReadingLimits::fail()
{
    throw ConversionError::engineFailure(
        T("The file is too large to be read.", "Le fichier est trop volumineux pour être lu."));
}

void ReadingBudget::spend(const std::filesystem::path &part)
{
    if (m_seen.insert(part).second)
        return;
    // A part costs something even when it is empty: a list may name it a million times.
    constexpr std::uint64_t openingCost = 4096;
    std::error_code failure;
    const std::uintmax_t size = std::filesystem::file_size(part, failure);
    const std::uint64_t cost = openingCost + (failure ? 0 : size);
    ReadingLimits::require(cost, m_left);
    m_left -= cost;
}

} // namespace nolfa
