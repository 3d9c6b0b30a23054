#include "lid/LeaseClientLidSleepBlocker.h"

#include <utility>

#include "base/MainThread.h"
#include "lid/LidSleepBlockerError.h"

namespace wakeloft {

using Outcome = XPCReply::Outcome;

LeaseClientLidSleepBlocker::LeaseClientLidSleepBlocker(std::shared_ptr<LidHelperRegistration> registration,
                                                       std::optional<std::string> helperRequirement,
                                                       double replyTimeout,
                                                       std::unique_ptr<LidLeaseTransport> transport)
    : registration_(std::move(registration)),
      helperRequirement_(std::move(helperRequirement)),
      replyTimeout_(replyTimeout),
      transport_(std::move(transport)) {}

void LeaseClientLidSleepBlocker::prepare() {
  requireMainThread("LeaseClientLidSleepBlocker::prepare");
  if (!helperRequirement_) throw LidSleepBlockerError::helperUnavailable();
  switch (registration_->status()) {
    case LidHelperStatus::enabled: return;
    case LidHelperStatus::requiresApproval: throw LidSleepBlockerError::helperRequiresApproval();
    case LidHelperStatus::notRegistered:
    case LidHelperStatus::notFound: break;
  }
  std::exception_ptr registrationError;
  try {
    registration_->registerHelper();
  } catch (...) {
    registrationError = std::current_exception();
  }
  // Registering often succeeds only as far as asking the user: that is what
  // the caller must hear, whatever registration said.
  if (registration_->status() == LidHelperStatus::requiresApproval) {
    throw LidSleepBlockerError::helperRequiresApproval();
  }
  if (registrationError) std::rethrow_exception(registrationError);
}

void LeaseClientLidSleepBlocker::renew(Date until, Completion completion) {
  requireMainThread("LeaseClientLidSleepBlocker::renew");
  ask([this, until, completion = std::move(completion)](Done done) {
    send(LidLeaseRequest::renew(until.secondsSince1970),
         [this, completion, done = std::move(done)](const Outcome& outcome, bool wasAnswering) {
           completion(renewal(outcome, wasAnswering));
           done();
         });
  });
}

void LeaseClientLidSleepBlocker::revoke(Completion completion) {
  requireMainThread("LeaseClientLidSleepBlocker::revoke");
  ask([this, completion = std::move(completion)](Done done) {
    isEngaged_ = false;
    if (!transport_->isOpen() && !isResetUnconfirmed_) {
      // The helper never held anything for this client.
      completion(nullptr);
      done();
      return;
    }
    send(LidLeaseRequest::revoke(), [this, completion, done = std::move(done)](const Outcome& outcome, bool) {
      completion(giveBack(outcome));
      done();
    });
  });
}

void LeaseClientLidSleepBlocker::ask(Job job) {
  waiting_.push_back(std::move(job));
  askNext();
}

void LeaseClientLidSleepBlocker::askNext() {
  if (isAsking_ || waiting_.empty()) return;
  isAsking_ = true;
  auto job = std::move(waiting_.front());
  waiting_.pop_front();
  job([this] {
    isAsking_ = false;
    askNext();
  });
}

void LeaseClientLidSleepBlocker::send(const LidLeaseRequest& request, OutcomeHandler handler) {
  if (!helperRequirement_) {
    handler(Outcome::failed(), false);
    return;
  }
  const bool wasAnswering = transport_->isOpen();
  if (!wasAnswering) transport_->open(*helperRequirement_);

  auto reply = XPCReply::make(weakSelf_([wasAnswering, handler = std::move(handler)](
                                            LeaseClientLidSleepBlocker& self, Outcome outcome) {
    // A connection that never answered is not worth keeping; one that has
    // answered before may just have been slow this once.
    const bool broken = outcome.kind() == Outcome::Kind::failed;
    const bool silentFromTheStart = outcome.kind() == Outcome::Kind::unanswered && !wasAnswering;
    if (broken || silentFromTheStart) self.transport_->drop();
    handler(outcome, wasAnswering);
  }));
  transport_->send(request, reply);
  reply->expire(replyTimeout_);
}

std::exception_ptr LeaseClientLidSleepBlocker::renewal(const Outcome& outcome, bool wasAnswering) {
  switch (outcome.kind()) {
    case Outcome::Kind::replied:
      if (const auto& reason = outcome.text()) {
        isEngaged_ = false;
        return std::make_exception_ptr(LidSleepBlockerError::helperRefused(*reason));
      }
      isEngaged_ = true;
      isResetUnconfirmed_ = false;
      return nullptr;
    case Outcome::Kind::unanswered:
      // The helper may have granted it and only the answer got lost.
      if (wasAnswering) isResetUnconfirmed_ = true;
      [[fallthrough]];
    case Outcome::Kind::failed:
      isEngaged_ = false;
      return unreachable();
  }
  return unreachable();
}

std::exception_ptr LeaseClientLidSleepBlocker::giveBack(const Outcome& outcome) {
  switch (outcome.kind()) {
    case Outcome::Kind::replied:
      if (const auto& reason = outcome.text()) {
        isResetUnconfirmed_ = true;
        return std::make_exception_ptr(LidSleepBlockerError::helperRefused(*reason));
      }
      isResetUnconfirmed_ = false;
      return nullptr;
    case Outcome::Kind::unanswered:
      isResetUnconfirmed_ = true;
      return std::make_exception_ptr(LidSleepBlockerError::helperUnavailable());
    case Outcome::Kind::failed:
      // Nothing reached means nothing held, unless an earlier request may
      // have been granted unseen.
      if (isResetUnconfirmed_) return std::make_exception_ptr(LidSleepBlockerError::helperUnavailable());
      return nullptr;
  }
  return nullptr;
}

std::exception_ptr LeaseClientLidSleepBlocker::unreachable() const {
  if (registration_->status() == LidHelperStatus::requiresApproval) {
    return std::make_exception_ptr(LidSleepBlockerError::helperRequiresApproval());
  }
  return std::make_exception_ptr(LidSleepBlockerError::helperUnavailable());
}

}  // namespace wakeloft
