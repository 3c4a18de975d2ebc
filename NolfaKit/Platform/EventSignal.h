#pragma once

#include "Platform/FileDescriptor.h"

namespace nolfa {

/// A flag that a poll loop can wait for, and any thread, or a stop callback, can raise.
class EventSignal {
public:
    /// @throws PlatformError when the system is out of descriptors.
    EventSignal();

    /// Becomes readable once raised.
    [[nodiscard]] int descriptor() const noexcept { return m_descriptor.get(); }

    /// Never blocks. Thread-safe.
    void raise() noexcept;

    /// Lowers the flag again.
    void lower() noexcept;

private:
    FileDescriptor m_descriptor;
};

} // namespace nolfa
