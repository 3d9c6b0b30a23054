#pragma once

#include <functional>
#include <memory>

#include "automatic/AutomaticSessionController.h"
#include "automatic/AutomaticSessionStore.h"
#include "automatic/ScreenLockSetting.h"
#include "base/Observation.h"
#include "lid/LidAwakeController.h"
#include "session/AwakeController.h"
#include "session/ProcessBindingController.h"
#include "session/ScreenLockState.h"

namespace wakeloft {

// "Stop when the screen locks": when the user asked for it, a lock or a
// switch to another login session ends every session, the user's, the
// automatic one and one held for processes, which lets go of them. Not
// while Deepwake is wanted: closing the lid locks most Macs, and keeping a
// closed Mac awake is what Deepwake is for. Automatic sessions stay away
// until the unlock, then come back if a rule holds. Main thread only.
class ScreenLockPolicy final : public ScreenLockSetting {
 public:
  // `automatic` is absent where no automatic sessions are built.
  ScreenLockPolicy(std::shared_ptr<ScreenLockState> lock, std::shared_ptr<AwakeController> awake,
                   std::shared_ptr<ProcessBindingController> binding, std::shared_ptr<const LidAwakeController> lid,
                   std::shared_ptr<AutomaticSessionController> automatic, std::shared_ptr<AutomaticSessionStore> store);
  ScreenLockPolicy(const ScreenLockPolicy&) = delete;
  ScreenLockPolicy& operator=(const ScreenLockPolicy&) = delete;

  bool stopsWhenScreenLocks() const override { return stopsWhenScreenLocks_; }
  void setStopsWhenScreenLocks(bool on) override;
  bool isForced() const override { return isForced_; }
  // Reads the setting again, for a profile that arrived or changed.
  void reload();

  [[nodiscard]] Subscription observe(std::function<void()> handler) { return changed_.observe(std::move(handler)); }

 private:
  void lockChanged();

  std::shared_ptr<ScreenLockState> lock_;
  std::shared_ptr<AwakeController> awake_;
  std::shared_ptr<ProcessBindingController> binding_;
  std::shared_ptr<const LidAwakeController> lid_;
  std::shared_ptr<AutomaticSessionController> automatic_;
  std::shared_ptr<AutomaticSessionStore> store_;
  ChangeSignal changed_;
  Published<bool> stopsWhenScreenLocks_{changed_, false};
  Published<bool> isForced_{changed_, false};
  // Whether this lock ended the sessions, so that the unlock lets the
  // automatic ones back.
  bool endedByLock_ = false;
  Subscription lockChanges_;
  WeakSelf<ScreenLockPolicy> weakSelf_{this};
};

}  // namespace wakeloft
