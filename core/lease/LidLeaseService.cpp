#include "lease/LidLeaseService.h"

#include <algorithm>
#include <cmath>

#include "base/MainThread.h"
#include "clock/MainRunLoop.h"

namespace wakeloft {

LidLeaseService::LidLeaseService(std::shared_ptr<LidSleepLeaseKeeper> keeper, Log log)
    : keeper_(std::move(keeper)), log_(std::move(log)) {}

LidLeaseService::Reply LidLeaseService::renew(double until, std::uint64_t from) {
  requireMainThread("LidLeaseService::renew");
  if (!std::isfinite(until)) {
    writeLog("lease refused: the deadline is not a number");
    return LidHelperRefusal::deadlineNotANumber().reason();
  }

  const auto term = keeper_->term(Date::fromSecondsSince1970(until));
  if (!term) return revoke(from);

  // Told once that its lease was ended elsewhere; its next renewal is normal.
  if (yielded_.erase(from) > 0) return std::string(yieldedReason);

  const SleepSettingStanding standing = keeper_->readStanding();
  switch (standing.kind()) {
    case SleepSettingStanding::Kind::onElsewhere:
      writeLog("lease refused: disablesleep is already 1 and this helper did not write it; left as it is");
      return std::string(alreadyOnReason);
    case SleepSettingStanding::Kind::offElsewhere:
      // The keeper has already dropped its lease and adopted the 0. Owed a
      // notice are the holders now; one still owed from an earlier time
      // held nothing since.
      yielded_.clear();
      for (const auto& [client, held] : terms_) {
        if (client != from) yielded_.insert(client);
      }
      terms_.clear();
      writeLog("lease ended: disablesleep was set to 0 by something else; left at 0");
      return std::string(yieldedReason);
    case SleepSettingStanding::Kind::unread:
      writeLog("lease refused: disablesleep could not be read, so it was not written: " + standing.detail());
      return LidHelperRefusal::settingUnreadable(standing.detail()).reason();
    case SleepSettingStanding::Kind::asWritten:
      break;
  }

  terms_[from] = *term;
  settle();
  if (const auto error = keeper_->lastErrorDescription()) {
    // The term stays: the keeper tries the write again.
    writeLog("lease refused: disablesleep could not be written and is being retried: " + *error);
    return LidHelperRefusal::settingUnwritten(*error).reason();
  }
  return std::nullopt;
}

LidLeaseService::Reply LidLeaseService::revoke(std::uint64_t from) {
  requireMainThread("LidLeaseService::revoke");
  terms_.erase(from);
  yielded_.erase(from);
  settle();
  // Another client's lease still runs: this client has nothing to hear.
  if (!terms_.empty()) return std::nullopt;
  if (const auto error = keeper_->lastErrorDescription()) {
    // Logged here: the XPC revocation's reply carries nothing, and a
    // disconnect has no one to tell.
    writeLog("lease ended, but disablesleep could not be put back and is being retried: " + *error);
    return LidHelperRefusal::settingNotPutBack(*error).reason();
  }
  return std::nullopt;
}

LidLeaseService::Reply LidLeaseService::handle(const LidLeaseRequest& request, std::uint64_t from) {
  switch (request.kind()) {
    case LidLeaseRequest::Kind::renew:
      return renew(request.until(), from);
    case LidLeaseRequest::Kind::status:
      return status().text();
    case LidLeaseRequest::Kind::revoke:
    case LidLeaseRequest::Kind::disconnect:
      return revoke(from);
  }
  return revoke(from);
}

LidLeaseStatus LidLeaseService::status() const {
  requireMainThread("LidLeaseService::status");
  return keeper_->status();
}

void LidLeaseService::checkLease() {
  requireMainThread("LidLeaseService::checkLease");
  settle();
}

LidLeaseService::Requests LidLeaseService::requests() {
  auto handleHere = weakSelf_([](LidLeaseService& self, std::uint64_t client, const LidLeaseRequest& request,
                                 const ReplyHandler& reply) {
    Reply result = self.handle(request, client);
    if (reply) reply(std::move(result));
  });
  // Runs on connection threads: touches nothing but the queue.
  return [handleHere](std::uint64_t client, LidLeaseRequest request, ReplyHandler reply) {
    MainRunLoop::perform([handleHere, client, request, reply = std::move(reply)] { handleHere(client, request, reply); });
  };
}

std::set<std::uint64_t> LidLeaseService::holders() const {
  std::set<std::uint64_t> clients;
  for (const auto& [client, term] : terms_) clients.insert(client);
  return clients;
}

std::optional<LidLeaseTerm> LidLeaseService::earliestLapse() const {
  if (terms_.empty()) return std::nullopt;
  LidLeaseTerm earliest = terms_.begin()->second;
  for (const auto& [client, term] : terms_) {
    earliest.expiry = std::min(earliest.expiry, term.expiry);
    earliest.uptimeExpiry = std::min(earliest.uptimeExpiry, term.uptimeExpiry);
  }
  return earliest;
}

void LidLeaseService::settle() {
  std::erase_if(terms_, [this](const auto& entry) { return keeper_->hasLapsed(entry.second); });
  if (terms_.empty()) {
    keeper_->revoke();
    return;
  }
  // Each end on its own: the two may come from different clients.
  LidLeaseTerm lease = terms_.begin()->second;
  for (const auto& [client, term] : terms_) {
    lease.expiry = std::max(lease.expiry, term.expiry);
    lease.uptimeExpiry = std::max(lease.uptimeExpiry, term.uptimeExpiry);
  }
  keeper_->hold(lease);
}

void LidLeaseService::writeLog(const std::string& line) const {
  if (log_) log_(line);
}

}  // namespace wakeloft
