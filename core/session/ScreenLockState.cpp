#include "session/ScreenLockState.h"

#include "base/MainThread.h"

namespace wakeloft {

ScreenLockState::ScreenLockState(std::shared_ptr<ScreenLockNotifier> notifier) : notifier_(std::move(notifier)) {
  notifier_->observe(weakSelf_([](ScreenLockState& self, ScreenLockNotifier::Event event) { self.heard(event); }));
}

void ScreenLockState::heard(ScreenLockNotifier::Event event) {
  requireMainThread("ScreenLockState");
  using Event = ScreenLockNotifier::Event;
  switch (event) {
    case Event::screenLocked: screenLocked_ = true; break;
    case Event::screenUnlocked: screenLocked_ = false; break;
    case Event::sessionSwitchedOut: switchedOut_ = true; break;
    // Coming back in goes through the login window, which unlocks.
    case Event::sessionSwitchedIn:
      switchedOut_ = false;
      screenLocked_ = false;
      break;
  }
  isLocked_.set(screenLocked_ || switchedOut_);
}

}  // namespace wakeloft
