#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/Observation.h"
#include "base/ProcessExitWatcher.h"
#include "base/ProcessTable.h"
#include "base/WeakSelf.h"
#include "session/AwakeController.h"
#include "session/ProcessBindingStore.h"

namespace wakeloft {

// Sessions bound to a process: an awake session that also ends when a given
// process ends, beside its deadline. Rides on the awake controller and lets
// go of the process at any other start or stop of the session (the user
// turning it off or choosing another length, the deadline), so only a
// session this controller started is ever bound.
//
// A process is its pid with its start time: a reused pid is never taken for
// it. The binding is remembered across launches and taken up again only
// while that same process still runs; otherwise the record is cleaned away
// and the session it held is ended. Main thread only.
class ProcessBindingController {
 public:
  ProcessBindingController(std::shared_ptr<AwakeController> awake, std::shared_ptr<ProcessBindingStore> store,
                           std::shared_ptr<const ProcessTable> processes, std::shared_ptr<ProcessExitWatcher> watcher,
                           bool restoringPreviousState);
  ProcessBindingController(const ProcessBindingController&) = delete;
  ProcessBindingController& operator=(const ProcessBindingController&) = delete;

  // Keeps the Mac awake until process `pid` ends, or for `seconds` when
  // given, whichever comes first: a new session in place of any running one.
  // Says why not, changing nothing, when there is no such process or its end
  // cannot be watched.
  std::optional<std::string> hold(pid_t pid, std::optional<double> seconds);

  // The process the session is bound to.
  const std::optional<RunningProcess>& boundProcess() const { return bound_; }

  [[nodiscard]] Subscription observe(std::function<void()> handler) { return changed_.observe(std::move(handler)); }

  // The name as it is shown and stored: UTF-8 without control characters,
  // anything else a "?", cut at 64 bytes; the pid when there is no name.
  static std::string shownName(std::string_view name, pid_t pid);

 private:
  std::optional<std::string> watch(const RunningProcess& process);
  void ended(const ProcessIdentity& process);
  void release();
  // The session changes this controller makes itself keep the binding.
  template <typename Change>
  void changeSession(Change change);

  std::shared_ptr<AwakeController> awake_;
  std::shared_ptr<ProcessBindingStore> store_;
  std::shared_ptr<const ProcessTable> processes_;
  std::shared_ptr<ProcessExitWatcher> watcher_;

  ChangeSignal changed_;
  Published<std::optional<RunningProcess>> bound_{changed_, std::nullopt};
  bool isChangingSession_ = false;
  WeakSelf<ProcessBindingController> weakSelf_{this};
};

}  // namespace wakeloft
