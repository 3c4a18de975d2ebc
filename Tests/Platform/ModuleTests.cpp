#include "Platform/Module.h"

#include "Platform/PlatformError.h"

#include <gtest/gtest.h>

using namespace nolfa;

TEST(Module, showsWhatItHoldsTheSameEachTime)
{
    void *const entry = Module::entry("NolfaKitTesseract", "nolfaMakeTextLineReader");
    EXPECT_NE(entry, nullptr);
    EXPECT_EQ(Module::entry("NolfaKitTesseract", "nolfaMakeTextLineReader"), entry);
}

TEST(Module, whatIsNotThereIsAFailureThatNamesIt)
{
    const auto failure = [](const std::string &module, const std::string &name) {
        try {
            (void)Module::entry(module, name);
        } catch (const PlatformError &error) {
            return std::string(error.what());
        }
        return std::string("none");
    };
    EXPECT_NE(failure("NolfaKitNothing", "x").find("libNolfaKitNothing.so"), std::string::npos);
    EXPECT_NE(failure("NolfaKitTesseract", "nolfaNothing").find("nolfaNothing"), std::string::npos);
}
