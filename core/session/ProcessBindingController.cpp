#include "session/ProcessBindingController.h"

#include <utility>

#include "base/MainThread.h"
#include "base/Utf8.h"
#include "session/UserDefaultsProcessBindingStore.h"

namespace wakeloft {

ProcessBindingController::ProcessBindingController(std::shared_ptr<AwakeController> awake,
                                                   std::shared_ptr<ProcessBindingStore> store,
                                                   std::shared_ptr<const ProcessTable> processes,
                                                   std::shared_ptr<ProcessExitWatcher> watcher,
                                                   bool restoringPreviousState)
    : awake_(std::move(awake)),
      store_(std::move(store)),
      processes_(std::move(processes)),
      watcher_(std::move(watcher)) {
  awake_->observeSession(weakSelf_([](ProcessBindingController& self) {
    if (!self.isChangingSession_ && self.bound_.get()) self.release();
  }));
  if (!restoringPreviousState) return;

  const auto stored = store_->load();
  if (!stored.isUnreadable() && !stored.process()) return;
  // Bound, while the session it held is still asked for, to the very
  // process that runs under that pid now.
  if (stored.process() && awake_->isRequested()) {
    const auto running = processes_->find(stored.process()->identity.pid);
    if (running && running->identity == stored.process()->identity && !watch(*stored.process())) {
      bound_.set(stored.process());
      return;
    }
  }
  // A garbled record, or a process that is gone: the session it held ends
  // with it, as it would have had the app been running.
  store_->save(std::nullopt);
  if (awake_->isRequested()) changeSession([&] { awake_->turnOff(); });
}

std::optional<std::string> ProcessBindingController::hold(pid_t pid, std::optional<double> seconds) {
  requireMainThread("ProcessBindingController::hold");
  const auto found = processes_->find(pid);
  if (!found) return "there is no process " + std::to_string(pid);
  RunningProcess process{found->identity, shownName(found->name, pid)};
  if (auto failure = watch(process)) {
    // The watcher let go of the process bound before; it is watched again,
    // or its session ends when that is no longer possible.
    if (const auto previous = bound_.get(); previous && watch(*previous)) ended(previous->identity);
    return failure;
  }

  changeSession([&] { awake_->turnOn(seconds); });
  if (!awake_->isRequested()) {
    // A length the session cannot have turned it off instead.
    watcher_->cancel();
    bound_.set(std::nullopt);
    store_->save(std::nullopt);
    return "the session cannot last that long";
  }
  bound_.set(process);
  store_->save(process);
  return std::nullopt;
}

std::optional<std::string> ProcessBindingController::watch(const RunningProcess& process) {
  const auto identity = process.identity;
  try {
    watcher_->watch(identity.pid, weakSelf_([identity](ProcessBindingController& self) { self.ended(identity); }));
  } catch (const std::exception& error) {
    return error.what();
  }
  // Looked up again once watched: had the pid passed to another process in
  // between, the watch would follow that one.
  const auto now = processes_->find(identity.pid);
  if (!now || now->identity != identity) {
    watcher_->cancel();
    return "process " + std::to_string(identity.pid) + " has ended";
  }
  return std::nullopt;
}

void ProcessBindingController::ended(const ProcessIdentity& process) {
  if (!bound_.get() || bound_.get()->identity != process) return;
  bound_.set(std::nullopt);
  store_->save(std::nullopt);
  changeSession([&] { awake_->turnOff(); });
}

void ProcessBindingController::release() {
  watcher_->cancel();
  bound_.set(std::nullopt);
  store_->save(std::nullopt);
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
