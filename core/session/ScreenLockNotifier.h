#pragma once

#include <functional>

namespace wakeloft {

// Word of the screen locking and unlocking, and of this login session
// switching out for another user's and back in. It never reads a state of
// its own: what it tells is what the system announced.
class ScreenLockNotifier {
 public:
  enum class Event { screenLocked, screenUnlocked, sessionSwitchedOut, sessionSwitchedIn };

  virtual ~ScreenLockNotifier() = default;
  // Told on the main thread. Replaces any earlier handler.
  virtual void observe(std::function<void(Event)> handler) = 0;
};

}  // namespace wakeloft
