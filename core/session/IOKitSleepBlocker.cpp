#include "session/IOKitSleepBlocker.h"

#include <utility>

#include "session/SleepBlockerError.h"

namespace wakeloft {

IOKitSleepBlocker::IOKitSleepBlocker(std::shared_ptr<PowerAssertions> assertions, std::string reason,
                                     std::string type)
    : assertions_(std::move(assertions)), reason_(std::move(reason)), type_(std::move(type)) {}

IOKitSleepBlocker::~IOKitSleepBlocker() { release(); }

void IOKitSleepBlocker::engage() {
  if (assertionID_) return;
  const auto created = assertions_->create(type_, assertionLevelOn, reason_);
  if (created.code != 0) throw SleepBlockerError::assertionFailed(created.code);
  assertionID_ = created.assertionID;
}

void IOKitSleepBlocker::restore() {
  if (!assertionID_ || assertions_->isHeld(*assertionID_, type_, reason_)) return;
  // Given back under the old ID all the same: should the system still count
  // it after all, it must not outlive the session.
  release();
  engage();
}

void IOKitSleepBlocker::release() {
  if (!assertionID_) return;
  const auto assertionID = *std::exchange(assertionID_, std::nullopt);
  // A refused release leaves nothing the app could do about it; the
  // identifier is dropped all the same.
  assertions_->release(assertionID);
}

}  // namespace wakeloft
