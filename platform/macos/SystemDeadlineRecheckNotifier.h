#pragma once

#include <functional>
#include <memory>

#include "clock/DeadlineRecheckNotifier.h"

namespace wakeloft {

// Asks for deadlines to be judged again when the Mac wakes (the shared
// workspace's centre) and when the system clock or time zone is set (the
// default centre), since a schedule's boundaries move with the zone. Nothing
// else, not screens, triggers a re-check. Main thread.
class SystemDeadlineRecheckNotifier final : public DeadlineRecheckNotifier {
 public:
  SystemDeadlineRecheckNotifier();
  ~SystemDeadlineRecheckNotifier() override;
  SystemDeadlineRecheckNotifier(const SystemDeadlineRecheckNotifier&) = delete;
  SystemDeadlineRecheckNotifier& operator=(const SystemDeadlineRecheckNotifier&) = delete;

  // Replaces the earlier observers, so only the latest handler runs.
  void observe(std::function<void()> handler) override;

 private:
  struct Observers;  // the two centres and their observer tokens

  void stopObserving();

  std::unique_ptr<Observers> observers_;
};

}  // namespace wakeloft
