#include "helper/LidSleepCheck.h"

#include <exception>

namespace wakeloft {

LidSleepCheck::LidSleepCheck(std::shared_ptr<Clamshell> clamshell, std::function<void(const std::string&)> log)
    : clamshell_(std::move(clamshell)), log_(std::move(log)) {}

void LidSleepCheck::settingSettled(bool sleepDisabled) {
  const bool released = held_ && !sleepDisabled;
  held_ = sleepDisabled;
  if (released) lastLeaseEnded();
}

void LidSleepCheck::lastLeaseEnded() {
  const auto closed = clamshell_->lidIsClosed();
  if (!closed) {
    log_("lease ended with the setting back at 0, but the lid state could not be read; sleep was not requested");
    return;
  }
  if (!*closed) return;
  const auto causesSleep = clamshell_->closingCausesSleep();
  if (!causesSleep) {
    log_("lease ended with the lid closed, but whether that causes sleep could not be read; sleep was not requested");
    return;
  }
  // Closed-display mode: the Mac is meant to run with its lid closed.
  if (!*causesSleep) return;
  try {
    clamshell_->requestSleep();
    log_("lease ended with the lid closed and the setting back at 0: asked the system to sleep");
  } catch (const std::exception& error) {
    log_(std::string("lease ended with the lid closed and the setting back at 0, but sleep could not be requested: ") +
         error.what());
  }
}

}  // namespace wakeloft
