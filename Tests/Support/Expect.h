#pragma once

#include "Engine/ConversionError.h"

#include <gtest/gtest.h>
#include <ostream>

namespace nolfa {

inline void PrintTo(const ConversionError &error, std::ostream *out)
{
    *out << error.errorDescription();
}

} // namespace nolfa

namespace nolfa::testing {

/// Expects that @p work fails with exactly this error.
template <typename Work> void expectError(const ConversionError &expected, Work work)
{
    try {
        work();
        ADD_FAILURE() << "no failure; expected: " << expected.errorDescription();
    } catch (const ConversionError &error) {
        EXPECT_EQ(error, expected);
    }
}

/// Expects a failure of that case, and returns its payload.
template <typename Alternative, typename Work> Alternative expectCase(Work work)
{
    try {
        work();
        ADD_FAILURE() << "no failure";
    } catch (const ConversionError &error) {
        if (const Alternative *payload = error.as<Alternative>())
            return *payload;
        ADD_FAILURE() << "another failure: " << error.errorDescription();
    }
    return Alternative{};
}

} // namespace nolfa::testing
