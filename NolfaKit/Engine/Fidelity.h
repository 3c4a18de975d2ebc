#pragma once

#include "Engine/ConversionPair.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace nolfa {

/// What quality to expect, best first.
enum class FidelityTier { excellent, good, bestEffort };

namespace FidelityTiers {

inline constexpr std::array allCases{FidelityTier::excellent, FidelityTier::good, FidelityTier::bestEffort};

} // namespace FidelityTiers

/// "excellent", "good" or "bestEffort".
[[nodiscard]] std::string_view rawValue(FidelityTier tier);

/// What the badge says, in the language in force.
[[nodiscard]] std::string label(FidelityTier tier);

/// What a conversion is worth.
struct ConversionCapability {
    FidelityTier tier;
    std::optional<std::string> note; ///< a sentence, in the language in force when it was asked for
    bool isMacOnly = false; ///< needs an application on the user's machine
    bool requiresNetwork = false; ///< fetches from Google

    bool operator==(const ConversionCapability &) const = default;
};

struct DirectConversion {
    ConversionPair pair;
    ConversionCapability capability;

    bool operator==(const DirectConversion &) const = default;
};

/// How good each conversion of the full product is, whatever is on offer on this machine. Written by hand, nothing
/// is computed from the legs of a chain. Thread-safe.
namespace Fidelity {

/// Pairs with a row of their own, built anew at each call because the notes follow the language.
[[nodiscard]] std::vector<DirectConversion> directConversions();

/// Absent for pairs that the product doesn't have.
[[nodiscard]] std::optional<ConversionCapability> capability(DocumentFormat from, DocumentFormat to);

[[nodiscard]] bool isSupported(DocumentFormat from, DocumentFormat to);

} // namespace Fidelity

} // namespace nolfa
