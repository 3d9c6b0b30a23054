#include "helper/LidHelperUpdateCheck.h"

namespace wakeloft {

LidHelperUpdateCheck::LidHelperUpdateCheck(LidHelperFileWatch watch, std::shared_ptr<const LidSleepLeaseKeeper> keeper,
                                           std::shared_ptr<const LidLeaseService> service, Log log,
                                           std::function<void()> stepAside)
    : watch_(std::move(watch)),
      keeper_(std::move(keeper)),
      service_(std::move(service)),
      log_(std::move(log)),
      stepAside_(std::move(stepAside)) {
  fileChanged();
}

void LidHelperUpdateCheck::fileChanged() {
  if (steppingAside_) return;
  const auto look = watch_.look();
  if (look.changed) report(look.finding);
  stepAsideIfDue();
}

void LidHelperUpdateCheck::settingSettled() {
  if (steppingAside_) return;
  stepAsideIfDue();
}

void LidHelperUpdateCheck::report(const LidHelperFileWatch::Finding& finding) {
  using Kind = LidHelperFileWatch::Finding::Kind;
  switch (finding.kind()) {
    case Kind::running:
      return;
    case Kind::missing:
      log_("helper file not found at " + watch_.path() + "; this helper keeps running");
      return;
    case Kind::unrecognised:
      log_("the file at " + watch_.path() + " is not validly signed helper code; this helper keeps running");
      return;
    case Kind::replaced:
      // The line for stepping aside says it when that happens at once.
      if (!LidHelperFileWatch::stepsAside(finding, isLeaseHeld(), isResetInDoubt())) {
        log_("a new helper is at " + watch_.path() + " (cdhash " + finding.codeDirectoryHash() +
             "); this one steps aside once no lease is held and the setting is back at 0");
      }
      return;
  }
}

bool LidHelperUpdateCheck::isLeaseHeld() const {
  return !service_->holders().empty() || keeper_->leaseExpiry().has_value() || keeper_->isSleepDisabled();
}

// A failed write leaves the setting's state unknown until a write succeeds.
bool LidHelperUpdateCheck::isResetInDoubt() const { return keeper_->lastError() != nullptr; }

void LidHelperUpdateCheck::stepAsideIfDue() {
  const auto& finding = watch_.lastFinding();
  if (!finding || !LidHelperFileWatch::stepsAside(*finding, isLeaseHeld(), isResetInDoubt())) return;
  steppingAside_ = true;
  log_("helper stepping aside: a new helper is at " + watch_.path() + " (cdhash " + finding->codeDirectoryHash() +
       ")");
  stepAside_();
}

}  // namespace wakeloft
