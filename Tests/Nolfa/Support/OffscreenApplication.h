#pragma once

#include <QGuiApplication>

namespace nolfa::testing {

/// An application with fonts, pictures and windows, but no screen; made at the first call, on the thread that the
/// tests run on.
inline void ensureOffscreenApplication()
{
    static int count = 3;
    static char name[] = "test";
    static char option[] = "-platform";
    static char platform[] = "offscreen";
    static char *arguments[] = {name, option, platform, nullptr};
    // Never destroyed: fonts and pictures may be in use until the very end.
    [[maybe_unused]] static const auto *const application = new QGuiApplication(count, arguments);
}

} // namespace nolfa::testing
