#pragma once

#include <functional>

namespace wakeloft {

// The one door onto the main thread from other threads. Defined by the
// platform layer (CFRunLoop on macOS, GLib's default main context on Linux).
namespace MainRunLoop {

// Runs `work` on the main thread in a later turn of the main loop, never
// before this returns, even when called on the main thread.
void perform(std::function<void()> work);

// Waits `seconds` off the main thread, then performs `work` as above.
void performAfter(double seconds, std::function<void()> work);

}  // namespace MainRunLoop
}  // namespace wakeloft
