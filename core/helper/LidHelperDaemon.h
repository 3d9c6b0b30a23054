#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "clock/DateProvider.h"
#include "clock/DeadlineRecheckNotifier.h"
#include "clock/DeadlineScheduler.h"
#include "clock/UptimeProvider.h"
#include "helper/LidSleepCheck.h"
#include "lease/LidLeaseService.h"
#include "lease/LidSleepLeaseKeeper.h"

namespace wakeloft {

// The lid helper's main-thread life: requests in, one tick armed only for the
// next moment something can change (a term lapsing, a failed write due for
// another try), the lid looked at when the last lease ends, and the setting
// put back before exit. An idle helper with the setting at 0 never wakes.
class LidHelperDaemon {
 public:
  // `settled` runs after every request, tick and stop, before the lid check;
  // the rig uses it to keep its file's lease end current. When the wall
  // clock may have jumped, `recheck` makes the daemon tick at once: a term
  // that a jump forward ended ends then, not at its uptime end.
  LidHelperDaemon(std::shared_ptr<LidSleepLeaseKeeper> keeper, std::shared_ptr<LidLeaseService> service,
                  std::shared_ptr<LidSleepCheck> lidCheck, std::shared_ptr<DeadlineScheduler> tick,
                  std::shared_ptr<const DateProvider> dates, std::shared_ptr<const UptimeProvider> uptime,
                  std::function<void()> settled = {}, std::shared_ptr<DeadlineRecheckNotifier> recheck = nullptr);
  LidHelperDaemon(const LidHelperDaemon&) = delete;
  LidHelperDaemon& operator=(const LidHelperDaemon&) = delete;

  // For the transport: callable on any thread; each request is handled on
  // the main loop in arrival order and answered there.
  LidLeaseService::Requests requests();

  // Ends lapsed terms and retries a failing write; armed by the daemon itself.
  void tick();

  // Puts the setting back before exit: tries at once, then after each
  // `pause()` until it works or `until()` says time is up. True when the
  // setting is back at 0.
  bool stop(const std::function<bool()>& until, const std::function<void()>& pause);

 private:
  void settle();
  void armTick();

  std::shared_ptr<LidSleepLeaseKeeper> keeper_;
  std::shared_ptr<LidLeaseService> service_;
  std::shared_ptr<LidSleepCheck> lidCheck_;
  std::shared_ptr<DeadlineScheduler> tick_;
  std::shared_ptr<const DateProvider> dates_;
  std::shared_ptr<const UptimeProvider> uptime_;
  std::function<void()> settled_;
  std::shared_ptr<DeadlineRecheckNotifier> recheck_;
  // The moment the tick is set for, if any.
  std::optional<Date> armed_;
  WeakSelf<LidHelperDaemon> weakSelf_{this};
};

}  // namespace wakeloft
