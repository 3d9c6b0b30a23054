#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/Date.h"
#include "clock/DateProvider.h"
#include "clock/UptimeProvider.h"
#include "lease/LidLeaseStatus.h"
#include "lease/LidLeaseTerm.h"
#include "lease/SleepSettingStanding.h"
#include "lease/SystemSleepSetting.h"

namespace wakeloft {

// The one owner of the sleep setting inside the lid helper. Writes 1 only
// while an unlapsed lease is held, puts 0 back when it ends, retries a failed
// write no more often than every LidSleepLease::retrySpacing, and gives way to
// anything else that changes the setting.
//
// Passive: no timer, no thread. The lease service drives it through hold()
// and revoke(), on each request and on the helper's tick, where the service's
// own checkLease() re-settles every client's term. The keeper's checkLease()
// re-checks only the one lease it holds, for a caller without a service; the
// helper does not call it. One thread; no lock.
class LidSleepLeaseKeeper {
 public:
  // Writes 0 at once: a 1 left by an earlier helper that died must not
  // outlive it.
  LidSleepLeaseKeeper(std::shared_ptr<SystemSleepSetting> setting, std::shared_ptr<const DateProvider> dates,
                      std::shared_ptr<const UptimeProvider> uptime);
  LidSleepLeaseKeeper(const LidSleepLeaseKeeper&) = delete;
  LidSleepLeaseKeeper& operator=(const LidSleepLeaseKeeper&) = delete;

  // At most LidSleepLease::duration from now; none unless `until` lies ahead.
  std::optional<LidLeaseTerm> term(Date until) const;
  bool hasLapsed(const LidLeaseTerm& term) const;

  // Holds the setting at 1 until the term lapses.
  void hold(const LidLeaseTerm& term);
  void renew(Date until);
  // Drops the lease and writes 0.
  void revoke();
  // Ends a lapsed lease and retries a failing write.
  void checkLease();
  // Reads the setting unless the keeper's own write is failing; adopts a 0
  // written by something else, and never overrides a 1 it did not write.
  SleepSettingStanding readStanding();

  // The setting as it reads now and what is left of the lease held over it,
  // for whoever asks. Changes nothing: no lease is ended, extended or
  // adopted, and nothing is written.
  LidLeaseStatus status() const;

  // Drops the lease and insists on writing 0 before the process ends: one
  // try at once, then `pause()` and another try until one succeeds or
  // `until()` answers true first. Returns whether the setting is back at 0.
  bool revokeBeforeExit(const std::function<bool()>& until, const std::function<void()>& pause);

  // True only after a successful write of 1.
  bool isSleepDisabled() const { return written_ == true; }
  std::optional<Date> leaseExpiry() const { return leaseExpiry_; }
  std::optional<double> leaseUptimeExpiry() const { return leaseUptimeExpiry_; }
  // The error of the last failed write; null once a write succeeded.
  std::exception_ptr lastError() const { return lastError_; }
  std::optional<std::string> lastErrorDescription() const;
  // While a write is failing: the uptime from which the next try is let
  // through, so a tick need not come sooner.
  std::optional<double> nextRetryUptime() const;

 private:
  struct FailedWrite {
    bool disabled;
    double at;
  };

  void write(bool disabled, bool evenIfJustFailed);
  void attemptWrite(bool disabled);
  void clearLease();

  std::optional<Date> leaseExpiry_;
  std::optional<double> leaseUptimeExpiry_;
  std::optional<bool> written_;
  std::exception_ptr lastError_;
  std::string lastErrorText_;
  std::optional<FailedWrite> failed_;
  std::shared_ptr<SystemSleepSetting> setting_;
  std::shared_ptr<const DateProvider> dates_;
  std::shared_ptr<const UptimeProvider> uptime_;
};

}  // namespace wakeloft
