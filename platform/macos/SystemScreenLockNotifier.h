#pragma once

#include <functional>
#include <memory>

#include "session/ScreenLockNotifier.h"

namespace wakeloft {

// Tells its handler on the main thread when the screen locks or unlocks
// (two distributed notifications) and when this login session switches out
// or back in (the workspace's own centre). The screen saver starting posts
// neither. Main thread only.
class SystemScreenLockNotifier final : public ScreenLockNotifier {
 public:
  SystemScreenLockNotifier();
  ~SystemScreenLockNotifier() override;
  SystemScreenLockNotifier(const SystemScreenLockNotifier&) = delete;
  SystemScreenLockNotifier& operator=(const SystemScreenLockNotifier&) = delete;

  // Replaces the earlier observation.
  void observe(std::function<void(Event)> handler) override;

 private:
  struct Observers;

  void stopObserving();

  std::unique_ptr<Observers> observers_;
};

}  // namespace wakeloft
