#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "base/WeakSelf.h"
#include "lease/LidHelperRefusal.h"
#include "lease/LidLeaseRequest.h"
#include "lease/LidLeaseStatus.h"
#include "lease/LidLeaseTerm.h"
#include "lease/LidSleepLeaseKeeper.h"

namespace wakeloft {

// The lid helper's side of the lease protocol: one term per client, merged
// into the one lease the keeper holds, so the setting is 1 exactly while
// some client's term runs. Turns the keeper's findings into the reply texts
// and log lines. Main thread only; `requests()` is the way in from other
// threads.
class LidLeaseService {
 public:
  // Absent: granted or done. Present: a LidHelperRefusal's reason text.
  using Reply = std::optional<std::string>;
  using ReplyHandler = std::function<void(Reply)>;
  // What the listener hands to every connection: callable on any thread.
  using Requests = std::function<void(std::uint64_t client, LidLeaseRequest request, ReplyHandler reply)>;
  using Log = std::function<void(const std::string&)>;

  static constexpr std::string_view alreadyOnReason = LidHelperRefusal::settingOnElsewhereText;
  static constexpr std::string_view yieldedReason = LidHelperRefusal::settingTurnedOffElsewhereText;

  LidLeaseService(std::shared_ptr<LidSleepLeaseKeeper> keeper, Log log);
  LidLeaseService(const LidLeaseService&) = delete;
  LidLeaseService& operator=(const LidLeaseService&) = delete;

  // `until` is seconds since 1970 as sent; a deadline already passed ends
  // the client's term.
  Reply renew(double until, std::uint64_t from);
  Reply revoke(std::uint64_t from);
  // Read only: a status request never creates, extends or ends a term.
  LidLeaseStatus status() const;
  // A status request is answered with its status's text.
  Reply handle(const LidLeaseRequest& request, std::uint64_t from);
  // Drops lapsed terms and brings the setting in line with the rest; the
  // helper's tick.
  void checkLease();

  // Queues each request to the main loop, handles it there in arrival order
  // and calls `reply` with the result on the main thread. Requests that
  // arrive after the service is gone are dropped.
  Requests requests();

  std::set<std::uint64_t> holders() const;
  // Clients whose term was ended by something else turning the setting off,
  // and who have not been told yet.
  const std::set<std::uint64_t>& yielded() const { return yielded_; }

  // For the helper's tick, so it wakes only when there is something to do.
  // The earliest moment a held term lapses: whichever of its wall date and
  // its uptime comes first. Absent when no term is held.
  std::optional<LidLeaseTerm> earliestLapse() const;
  // While a write is failing: the uptime at which checkLease() retries it.
  std::optional<double> nextRetryUptime() const { return keeper_->nextRetryUptime(); }

 private:
  void settle();
  void writeLog(const std::string& line) const;

  std::map<std::uint64_t, LidLeaseTerm> terms_;
  std::shared_ptr<LidSleepLeaseKeeper> keeper_;
  Log log_;
  std::set<std::uint64_t> yielded_;
  WeakSelf<LidLeaseService> weakSelf_{this};
};

}  // namespace wakeloft
