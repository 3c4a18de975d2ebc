#pragma once

namespace nolfa {

class Bundle;

/// The fonts that the application brings along.
namespace Fonts {

/// Makes the bundle's fonts known to this process: those in its folder "Fonts", else those at its top. Works once
/// per process, whatever it found. A font that can't be read is passed over; the system's font stands in for it.
/// Main thread, after the QGuiApplication is there.
void registerIfNeeded(const Bundle &bundle);

} // namespace Fonts

} // namespace nolfa
