#pragma once

#include <functional>
#include <memory>
#include <string>

#include "helper/LidHelperFileWatch.h"
#include "lease/LidLeaseService.h"
#include "lease/LidSleepLeaseKeeper.h"

namespace wakeloft {

// Lets a running helper make way for a new one: when an update has put other
// signed helper code at its path, it asks to step aside, but only once no
// lease is held and the setting is surely back at 0, so the new helper never
// starts with a 1 left behind. Looks at the file when told it changed, and
// re-judges after every request and tick, since the lease may end later.
//
// Main-thread confined, like the keeper and service it reads.
class LidHelperUpdateCheck {
 public:
  using Log = std::function<void(const std::string&)>;

  // Looks at the file at once. `stepAside` is called at most once, from
  // inside fileChanged() or settingSettled(): it should end the process soon
  // after, not from within the call.
  LidHelperUpdateCheck(LidHelperFileWatch watch, std::shared_ptr<const LidSleepLeaseKeeper> keeper,
                       std::shared_ptr<const LidLeaseService> service, Log log, std::function<void()> stepAside);
  LidHelperUpdateCheck(const LidHelperUpdateCheck&) = delete;
  LidHelperUpdateCheck& operator=(const LidHelperUpdateCheck&) = delete;

  // The file at the helper's path was written, replaced or removed.
  void fileChanged();
  // A request, tick or stop has just settled the lease.
  void settingSettled();

 private:
  void report(const LidHelperFileWatch::Finding& finding);
  bool isLeaseHeld() const;
  bool isResetInDoubt() const;
  void stepAsideIfDue();

  LidHelperFileWatch watch_;
  std::shared_ptr<const LidSleepLeaseKeeper> keeper_;
  std::shared_ptr<const LidLeaseService> service_;
  Log log_;
  std::function<void()> stepAside_;
  bool steppingAside_ = false;
};

}  // namespace wakeloft
