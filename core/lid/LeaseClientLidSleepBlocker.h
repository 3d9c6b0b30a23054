#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/WeakSelf.h"
#include "lease/XPCReply.h"
#include "lid/LidHelperRegistration.h"
#include "lid/LidLeaseTransport.h"
#include "lid/LidSleepBlocker.h"

namespace wakeloft {

// The app's lease client: asks the helper, one request at a time and in the
// order asked, to renew or give back the lease, and turns each answer, error
// or time-out into the blocker's state and an error for the caller.
// XPCLidSleepBlocker (macOS) is this over an NSXPCConnection transport,
// SocketLidSleepBlocker (Linux) is it over the lease rig's Unix socket.
//
// The connection is made on the first request and kept while the helper
// answers; it is dropped after a connection error and after an unanswered
// first request, and made anew on the next request. Main thread only.
class LeaseClientLidSleepBlocker : public LidSleepBlocker {
 public:
  // `helperRequirement` is what the helper must meet to answer; absent when
  // the app cannot tell which helper is its own, and then nothing is sent.
  LeaseClientLidSleepBlocker(std::shared_ptr<LidHelperRegistration> registration,
                             std::optional<std::string> helperRequirement, double replyTimeout,
                             std::unique_ptr<LidLeaseTransport> transport);
  LeaseClientLidSleepBlocker(const LeaseClientLidSleepBlocker&) = delete;
  LeaseClientLidSleepBlocker& operator=(const LeaseClientLidSleepBlocker&) = delete;

  // Registers the helper when it is not; throws LidSleepBlockerError when it
  // cannot be used yet, or registration's own error.
  void prepare() override;
  void renew(Date until, Completion completion) override;
  void revoke(Completion completion) override;
  bool isEngaged() const override { return isEngaged_; }

  // Set while the app cannot be sure the helper put the sleep setting back:
  // a revoke went unanswered or was refused, or a renewal went unanswered on
  // a connection that had been answering. Cleared by the next confirmed
  // renewal or revoke; while set, a revoke is sent even with no connection.
  bool isResetUnconfirmed() const { return isResetUnconfirmed_; }

  const std::optional<std::string>& helperRequirement() const { return helperRequirement_; }
  double replyTimeout() const { return replyTimeout_; }

 private:
  using Done = std::function<void()>;
  using Job = std::function<void(Done)>;
  using OutcomeHandler = std::function<void(const XPCReply::Outcome&, bool wasAnswering)>;

  void ask(Job job);
  void askNext();
  void send(const LidLeaseRequest& request, OutcomeHandler handler);
  std::exception_ptr renewal(const XPCReply::Outcome& outcome, bool wasAnswering);
  std::exception_ptr giveBack(const XPCReply::Outcome& outcome);
  std::exception_ptr unreachable() const;

  std::shared_ptr<LidHelperRegistration> registration_;
  std::optional<std::string> helperRequirement_;
  double replyTimeout_;
  std::unique_ptr<LidLeaseTransport> transport_;
  bool isEngaged_ = false;
  bool isResetUnconfirmed_ = false;
  std::deque<Job> waiting_;
  bool isAsking_ = false;
  WeakSelf<LeaseClientLidSleepBlocker> weakSelf_{this};
};

}  // namespace wakeloft
