#pragma once

#include <deque>
#include <exception>
#include <functional>
#include <optional>

#include "base/Date.h"
#include "lid/LidSleepBlocker.h"

namespace wakeloft {

// A lid sleep blocker with no helper behind it, for previews and tests: it
// counts calls, fails once on request and can hold its replies back so that
// a test decides when (and in which order) they arrive.
class InMemoryLidSleepBlocker final : public LidSleepBlocker {
 public:
  // Counts the call, then throws `nextPreparationError`.
  void prepare() override;
  // A successful reply holds the lease until `until` and counts as a renewal.
  void renew(Date until, Completion completion) override;
  // The reply drops the lease whether or not it carries an error.
  void revoke(Completion completion) override;
  bool isEngaged() const override { return leaseExpiry.has_value(); }

  // Gives the oldest held reply; nothing when none is held.
  void answerNext();
  // Gives every reply held now, oldest first. Replies asked for meanwhile
  // queue up behind them and stay held.
  void answerAll();

  std::optional<Date> leaseExpiry;
  // Confirmed renewals; revokes answered, failed ones included; prepare calls.
  int renewCount = 0;
  int revokeCount = 0;
  int prepareCount = 0;
  // Each is used by the next call of its kind and then cleared.
  std::exception_ptr nextRenewalError;
  std::exception_ptr nextPreparationError;
  std::exception_ptr nextRevocationError;
  // While set, replies wait in `unanswered`.
  bool holdsReplies = false;
  // Replies not given yet, oldest first.
  std::deque<std::function<void()>> unanswered;

 private:
  void reply(std::function<void()> giving);
};

}  // namespace wakeloft
