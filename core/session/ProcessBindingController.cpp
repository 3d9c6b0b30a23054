#include "session/ProcessBindingController.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/MainThread.h"
#include "base/Utf8.h"
#include "session/UserDefaultsProcessBindingStore.h"

namespace wakeloft {

namespace {

bool hasPassed(const std::optional<Date>& until, Date now) { return until && now >= *until; }

}  // namespace

ProcessBindingController::ProcessBindingController(std::shared_ptr<AwakeController> awake,
                                                   std::shared_ptr<ProcessBindingStore> store,
                                                   std::shared_ptr<const ProcessTable> processes,
                                                   std::shared_ptr<ProcessExitWatcher> watcher,
                                                   std::shared_ptr<const DateProvider> dates,
                                                   std::shared_ptr<DeadlineScheduler> scheduler,
                                                   bool restoringPreviousState)
    : awake_(std::move(awake)),
      store_(std::move(store)),
      processes_(std::move(processes)),
      watcher_(std::move(watcher)),
      dates_(std::move(dates)),
      scheduler_(std::move(scheduler)) {
  awake_->observeSession(weakSelf_([](ProcessBindingController& self) {
    if (self.isChangingSession_ || self.holds_.get().empty()) return;
    if (!self.awake_->isRequested()) {
      self.releaseAll();
      return;
    }
    self.user_.set(UserClaim{self.awake_->activeUntil()});
    self.settle();
  }));
  if (!restoringPreviousState) return;

  const auto stored = store_->load();
  if (!stored.isUnreadable() && !stored.claims()) return;
  if (stored.claims() && awake_->isRequested()) {
    // Each process taken up only while the very one runs under its pid.
    std::vector<ProcessHold> running;
    std::string failure;
    for (const auto& hold : stored.claims()->holds) {
      const auto now = processes_->find(hold.process.identity.pid);
      if (now && now->identity == hold.process.identity && watch(hold.process, failure)) running.push_back(hold);
    }
    user_.set(stored.claims()->user);
    holds_.set(std::move(running));
    settle();
    return;
  }
  // A garbled record, or claims on a session that is over: the session it
  // held ends with it, as it would have had the app been running.
  store_->save(std::nullopt);
  if (awake_->isRequested()) changeSession([&] { awake_->turnOff(); });
}

std::optional<std::string> ProcessBindingController::hold(pid_t pid, std::optional<double> seconds) {
  requireMainThread("ProcessBindingController::hold");
  const auto found = processes_->find(pid);
  if (!found) return "there is no process " + std::to_string(pid);
  std::optional<Date> until;
  if (seconds) {
    until = AwakeIntent::deadline(*seconds, dates_->now());
    if (!until) return "the session cannot last that long";
  }
  auto holds = holds_.get();
  const auto samePid = [pid](const ProcessHold& hold) { return hold.process.identity.pid == pid; };
  const auto previous = std::find_if(holds.begin(), holds.end(), samePid);
  if (previous == holds.end() && holds.size() >= SessionClaims::mostHolds) {
    return "Wakeloft already keeps the Mac awake for " + std::to_string(SessionClaims::mostHolds) + " processes";
  }
  const RunningProcess process{found->identity, shownName(found->name, pid)};
  if (std::string failure; !watch(process, failure)) return failure;

  // The session that runs before the first hold is the user's own.
  if (holds.empty() && awake_->isRequested()) user_.set(UserClaim{awake_->activeUntil()});
  if (holds.empty() && !awake_->isRequested()) user_.set(std::nullopt);
  if (previous != holds.end()) {
    *previous = {process, until};
  } else {
    holds.push_back({process, until});
  }
  holds_.set(std::move(holds));
  settle();
  return std::nullopt;
}

bool ProcessBindingController::watch(const RunningProcess& process, std::string& failure) {
  const auto identity = process.identity;
  try {
    watcher_->watch(identity.pid, weakSelf_([identity](ProcessBindingController& self) { self.ended(identity); }));
  } catch (const std::exception& error) {
    failure = error.what();
    return false;
  }
  // Looked up again once watched: had the pid passed to another process in
  // between, the watch would follow that one.
  const auto now = processes_->find(identity.pid);
  if (!now || now->identity != identity) {
    watcher_->cancel(identity.pid);
    failure = "process " + std::to_string(identity.pid) + " has ended";
    // A hold of the same pid was of a process that has ended too.
    ended(identity);
    for (const auto& hold : holds_.get()) {
      if (hold.process.identity.pid == identity.pid) ended(hold.process.identity);
    }
    return false;
  }
  return true;
}

void ProcessBindingController::ended(const ProcessIdentity& process) {
  auto holds = holds_.get();
  const auto gone = std::remove_if(holds.begin(), holds.end(),
                                   [&](const ProcessHold& hold) { return hold.process.identity == process; });
  if (gone == holds.end()) return;
  holds.erase(gone, holds.end());
  holds_.set(std::move(holds));
  settle();
}

void ProcessBindingController::releaseAll(std::optional<Release> why) {
  const Date now = dates_->now();
  const auto holds = holds_.get();
  holds_.set({});
  user_.set(std::nullopt);
  scheduler_->cancel();
  store_->save(std::nullopt);
  for (const auto& hold : holds) {
    watcher_->cancel(hold.process.identity.pid);
    const auto told = why.value_or(hasPassed(hold.until, now) ? Release::timeRanOut : Release::sessionTurnedOff);
    for (const auto& observer : releaseObservers_) observer(hold.process, told);
  }
}

void ProcessBindingController::settle() {
  const Date now = dates_->now();
  std::vector<ProcessHold> lapsed;
  std::vector<ProcessHold> live;
  for (const auto& hold : holds_.get()) (hasPassed(hold.until, now) ? lapsed : live).push_back(hold);
  if (user_.get() && hasPassed(user_.get()->until, now)) user_.set(std::nullopt);
  holds_.set(live);

  // The session lasts as long as its longest claim: without an end when any
  // claim has none.
  const auto user = user_.get();
  bool endless = user && !user->until;
  std::optional<Date> end = user ? user->until : std::nullopt;
  std::optional<Date> nextLapse;
  for (const auto& hold : live) {
    endless = endless || !hold.until;
    if (hold.until && (!end || *hold.until > *end)) end = hold.until;
    if (hold.until && (!nextLapse || *hold.until < *nextLapse)) nextLapse = hold.until;
  }
  if (!user && live.empty()) {
    if (awake_->isRequested()) changeSession([&] { awake_->turnOff(); });
  } else if (endless) {
    if (!awake_->isRequested() || awake_->activeUntil()) changeSession([&] { awake_->turnOn(std::nullopt); });
  } else if (!awake_->isRequested() || !awake_->activeUntil() ||
             std::abs(awake_->activeUntil()->secondsSince(*end)) > 0.5) {
    changeSession([&] { awake_->turnOn(end->secondsSince(now)); });
  }
  // Without a hold the session is simply the user's again.
  if (live.empty()) user_.set(std::nullopt);

  if (nextLapse) {
    scheduler_->schedule(*nextLapse, weakSelf_([](ProcessBindingController& self) { self.settle(); }));
  } else {
    scheduler_->cancel();
  }
  store_->save(live.empty() ? std::nullopt : std::optional(SessionClaims{user_.get(), live}));
  for (const auto& hold : lapsed) {
    watcher_->cancel(hold.process.identity.pid);
    for (const auto& observer : releaseObservers_) observer(hold.process, Release::timeRanOut);
  }
}

template <typename Change>
void ProcessBindingController::changeSession(Change change) {
  const bool was = std::exchange(isChangingSession_, true);
  change();
  isChangingSession_ = was;
}

std::string ProcessBindingController::shownName(std::string_view name, pid_t pid) {
  std::string shown;
  for (std::string_view rest = name; !rest.empty();) {
    const auto scalar = Utf8::front(rest);
    const bool control = scalar.value < 0x20 || (scalar.value >= 0x7F && scalar.value < 0xA0);
    const auto piece = scalar.valid && !control ? rest.substr(0, scalar.length) : std::string_view("?");
    if (shown.size() + piece.size() > UserDefaultsProcessBindingStore::longestName) break;
    shown += piece;
    rest.remove_prefix(scalar.length);
  }
  return shown.empty() ? std::to_string(pid) : shown;
}

}  // namespace wakeloft
