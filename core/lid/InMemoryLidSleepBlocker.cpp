#include "lid/InMemoryLidSleepBlocker.h"

#include <utility>

namespace wakeloft {

void InMemoryLidSleepBlocker::prepare() {
  ++prepareCount;
  if (auto error = std::exchange(nextPreparationError, nullptr)) std::rethrow_exception(error);
}

void InMemoryLidSleepBlocker::renew(Date until, Completion completion) {
  reply([this, until, error = std::exchange(nextRenewalError, nullptr), completion = std::move(completion)] {
    if (!error) {
      leaseExpiry = until;
      ++renewCount;
    }
    completion(error);
  });
}

void InMemoryLidSleepBlocker::revoke(Completion completion) {
  reply([this, error = std::exchange(nextRevocationError, nullptr), completion = std::move(completion)] {
    leaseExpiry.reset();
    ++revokeCount;
    completion(error);
  });
}

void InMemoryLidSleepBlocker::reply(std::function<void()> giving) {
  // Behind replies already held, so that answers keep the order of asking.
  if (holdsReplies || !unanswered.empty()) {
    unanswered.push_back(std::move(giving));
    return;
  }
  giving();
}

void InMemoryLidSleepBlocker::answerNext() {
  if (unanswered.empty()) return;
  auto giving = std::move(unanswered.front());
  unanswered.pop_front();
  giving();
}

void InMemoryLidSleepBlocker::answerAll() {
  for (auto count = unanswered.size(); count > 0 && !unanswered.empty(); --count) answerNext();
}

}  // namespace wakeloft
