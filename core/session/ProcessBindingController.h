#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Observation.h"
#include "base/ProcessExitWatcher.h"
#include "base/ProcessTable.h"
#include "base/WeakSelf.h"
#include "clock/DateProvider.h"
#include "clock/DeadlineScheduler.h"
#include "session/AwakeController.h"
#include "session/ProcessBindingStore.h"

namespace wakeloft {

// Sessions held for processes. The session lasts while any claim on it
// lasts: the user's own (until its end, or without one) and one for each
// process held (until the process ends or its own end passes, whichever is
// first). Rides on the awake controller: a start of the session by anyone
// else is the user's and replaces only the user's claim; a stop ends every
// claim.
//
// A process is its pid with its start time: a reused pid is never taken for
// it. The claims are remembered across launches; each process is taken up
// again only while that same process still runs, and one that is gone drops
// only its own claim. Main thread only.
class ProcessBindingController {
 public:
  // Why a hold was let go of while its process still ran.
  enum class Release { sessionTurnedOff, timeRanOut, screenLocked };

  ProcessBindingController(std::shared_ptr<AwakeController> awake, std::shared_ptr<ProcessBindingStore> store,
                           std::shared_ptr<const ProcessTable> processes, std::shared_ptr<ProcessExitWatcher> watcher,
                           std::shared_ptr<const DateProvider> dates, std::shared_ptr<DeadlineScheduler> scheduler,
                           bool restoringPreviousState);
  ProcessBindingController(const ProcessBindingController&) = delete;
  ProcessBindingController& operator=(const ProcessBindingController&) = delete;

  // Keeps the Mac awake until process `pid` ends, or for `seconds` when
  // given, whichever comes first, beside every other claim; a second hold of
  // the same process replaces its first. Says why not, changing nothing,
  // when there is no such process or its end cannot be watched.
  std::optional<std::string> hold(pid_t pid, std::optional<double> seconds);

  // The screen locked with sessions ending on a lock: lets go of every
  // process, each told as `screenLocked`. Ending the session is the caller's.
  void releaseForScreenLock() {
    if (!holds_.get().empty()) releaseAll(Release::screenLocked);
  }

  // The processes the session is held for.
  const std::vector<ProcessHold>& holds() const { return holds_; }
  // Whether the session lasts only for the processes, which a later launch
  // takes up again only if they still run.
  bool isHeldOnlyForProcesses() const { return !holds_.get().empty() && !user_.get(); }
  // The processes the panel names: see SessionClaims::endingLast.
  std::vector<RunningProcess> endingLast() const { return SessionClaims{user_, holds_}.endingLast(); }

  [[nodiscard]] Subscription observe(std::function<void()> handler) { return changed_.observe(std::move(handler)); }
  // Told of each hold let go of while its process still runs.
  void observeReleases(std::function<void(const RunningProcess&, Release)> observer) {
    releaseObservers_.push_back(std::move(observer));
  }

  // The name as it is shown and stored: UTF-8 without control characters,
  // anything else a "?", cut at 64 bytes; the pid when there is no name.
  static std::string shownName(std::string_view name, pid_t pid);

 private:
  bool watch(const RunningProcess& process, std::string& failure);
  void ended(const ProcessIdentity& process);
  // Each hold told as `why`, or by whether its time ran out.
  void releaseAll(std::optional<Release> why = std::nullopt);
  // Drops the claims that have passed and makes the session last exactly as
  // long as the claims left, then remembers them.
  void settle();
  // The session changes this controller makes itself keep the claims.
  template <typename Change>
  void changeSession(Change change);

  std::shared_ptr<AwakeController> awake_;
  std::shared_ptr<ProcessBindingStore> store_;
  std::shared_ptr<const ProcessTable> processes_;
  std::shared_ptr<ProcessExitWatcher> watcher_;
  std::shared_ptr<const DateProvider> dates_;
  std::shared_ptr<DeadlineScheduler> scheduler_;

  ChangeSignal changed_;
  Published<std::vector<ProcessHold>> holds_{changed_, {}};
  Published<std::optional<UserClaim>> user_{changed_, std::nullopt};
  std::vector<std::function<void(const RunningProcess&, Release)>> releaseObservers_;
  bool isChangingSession_ = false;
  WeakSelf<ProcessBindingController> weakSelf_{this};
};

}  // namespace wakeloft
