#pragma once

#include <functional>
#include <memory>

#include "base/Observation.h"
#include "base/WeakSelf.h"
#include "session/ScreenLockNotifier.h"

namespace wakeloft {

// Whether the screen counts as locked: while it is locked, and while this
// login session is switched out for another, whichever ends last. At launch
// it counts as unlocked, since nothing says otherwise; the screen saver is
// not a lock. Main thread only.
class ScreenLockState {
 public:
  explicit ScreenLockState(std::shared_ptr<ScreenLockNotifier> notifier);
  ScreenLockState(const ScreenLockState&) = delete;
  ScreenLockState& operator=(const ScreenLockState&) = delete;

  bool isLocked() const { return isLocked_; }

  [[nodiscard]] Subscription observe(std::function<void()> handler) { return changed_.observe(std::move(handler)); }

 private:
  void heard(ScreenLockNotifier::Event event);

  std::shared_ptr<ScreenLockNotifier> notifier_;
  bool screenLocked_ = false;
  bool switchedOut_ = false;
  ChangeSignal changed_;
  Published<bool> isLocked_{changed_, false};
  WeakSelf<ScreenLockState> weakSelf_{this};
};

}  // namespace wakeloft
