#pragma once

#include <functional>

namespace wakeloft {

// Work that only waits: time-outs and delayed hand-offs to the main loop.
// Never the main thread. Defined by the platform layer (a global dispatch
// queue on macOS, one timer thread elsewhere).
namespace BackgroundQueue {

// Runs `work` on a background thread once `seconds` have passed on a
// monotonic clock.
void runAfter(double seconds, std::function<void()> work);

}  // namespace BackgroundQueue
}  // namespace wakeloft
