#pragma once

#include <functional>

namespace wakeloft::testing {

// Drive the real main loop (GLib's default context on Linux, the main
// CFRunLoop on macOS) on the calling thread, which must be the main thread.

// Runs the loop until `done` answers true or `seconds` have passed; returns
// `done()`. The loop blocks between events instead of spinning.
bool pumpMainLoopUntil(const std::function<bool()>& done, double seconds);

// Runs the loop for `seconds`, whatever happens meanwhile.
void pumpMainLoopFor(double seconds);

// Runs everything the loop has ready now, without waiting for more.
void drainMainLoop();

}  // namespace wakeloft::testing
