#pragma once

#include "Platform/FileDescriptor.h"

#include <QSocketNotifier>

namespace nolfa {

/// Ends the event loop, as closing the window does, when the session or a terminal asks the program to end. A second
/// such signal ends the process at once. Signals aren't blocked: what the desktop opens for us would inherit that. One
/// for the process, on the main thread, after the application is there.
class EndOnSignals {
public:
    EndOnSignals();

private:
    FileDescriptor m_wake;
    QSocketNotifier m_notifier;
};

} // namespace nolfa
