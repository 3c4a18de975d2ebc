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
    if (QCoreApplication::instance() == nullptr)
        static const QGuiApplication application(count, arguments);
}

} // namespace nolfa::testing
