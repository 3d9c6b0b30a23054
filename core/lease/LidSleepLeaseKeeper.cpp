#include "lease/LidSleepLeaseKeeper.h"

#include <algorithm>

#include "lease/LidSleepLease.h"

namespace wakeloft {

namespace {

// The description of the exception being handled.
std::string describeCurrentError() {
  try {
    throw;
  } catch (const std::exception& error) {
    return error.what();
  } catch (...) {
    return "unknown error";
  }
}

}  // namespace

LidSleepLeaseKeeper::LidSleepLeaseKeeper(std::shared_ptr<SystemSleepSetting> setting,
                                         std::shared_ptr<const DateProvider> dates,
                                         std::shared_ptr<const UptimeProvider> uptime)
    : setting_(std::move(setting)), dates_(std::move(dates)), uptime_(std::move(uptime)) {
  write(false, /*evenIfJustFailed=*/false);
}

std::optional<LidLeaseTerm> LidSleepLeaseKeeper::term(Date until) const {
  const Date now = dates_->now();
  if (!(until > now)) return std::nullopt;  // also refuses NaN
  const Date expiry = std::min(until, now.adding(LidSleepLease::duration));
  return LidLeaseTerm{expiry, uptime_->uptime() + expiry.secondsSince(now)};
}

bool LidSleepLeaseKeeper::hasLapsed(const LidLeaseTerm& term) const {
  if (dates_->now() >= term.expiry) return true;
  return term.uptimeExpiry <= uptime_->uptime();
}

void LidSleepLeaseKeeper::hold(const LidLeaseTerm& term) {
  leaseExpiry_ = term.expiry;
  leaseUptimeExpiry_ = term.uptimeExpiry;
  write(true, /*evenIfJustFailed=*/false);
}

void LidSleepLeaseKeeper::renew(Date until) {
  if (const auto granted = term(until)) {
    hold(*granted);
  } else {
    revoke();
  }
}

void LidSleepLeaseKeeper::revoke() {
  clearLease();
  write(false, /*evenIfJustFailed=*/false);
}

void LidSleepLeaseKeeper::checkLease() {
  if (!leaseExpiry_ || !leaseUptimeExpiry_) {
    write(false, /*evenIfJustFailed=*/false);  // keeps retrying a failed restore
    return;
  }
  if (hasLapsed(LidLeaseTerm{*leaseExpiry_, *leaseUptimeExpiry_})) {
    clearLease();
    write(false, /*evenIfJustFailed=*/false);
    return;
  }
  write(true, /*evenIfJustFailed=*/false);
}

SleepSettingStanding LidSleepLeaseKeeper::readStanding() {
  // While our own write is failing the setting says nothing about others.
  if (lastError_ || !written_) return SleepSettingStanding::asWritten();
  bool disabled;
  try {
    disabled = setting_->readDisabled();
  } catch (...) {
    // Holding 1 ourselves, a failed read must not end the lease.
    if (*written_) return SleepSettingStanding::asWritten();
    return SleepSettingStanding::unread(describeCurrentError());
  }
  if (!disabled && *written_) {
    // Something else turned it off: adopt the 0 rather than fight it.
    clearLease();
    written_ = false;
    return SleepSettingStanding::offElsewhere();
  }
  if (disabled && !*written_) return SleepSettingStanding::onElsewhere();
  return SleepSettingStanding::asWritten();
}

LidLeaseStatus LidSleepLeaseKeeper::status() const {
  LidLeaseStatus status;
  try {
    status.setting = setting_->readDisabled() ? LidLeaseStatus::Setting::on : LidLeaseStatus::Setting::off;
  } catch (...) {
    status.setting = LidLeaseStatus::Setting::unreadable;
    status.unreadableDetail = describeCurrentError();
  }
  // Held only once 1 was written; a lapsed lease is as good as ended, even
  // before the next tick puts the setting back.
  if (isSleepDisabled() && leaseExpiry_ && leaseUptimeExpiry_ &&
      !hasLapsed(LidLeaseTerm{*leaseExpiry_, *leaseUptimeExpiry_})) {
    const double wall = leaseExpiry_->secondsSince(dates_->now());
    const double uptime = *leaseUptimeExpiry_ - uptime_->uptime();
    status.leaseRemaining = std::clamp(std::min(wall, uptime), 0.0, LidSleepLease::duration);
  }
  return status;
}

bool LidSleepLeaseKeeper::revokeBeforeExit(const std::function<bool()>& until, const std::function<void()>& pause) {
  clearLease();
  write(false, /*evenIfJustFailed=*/true);
  while (lastError_) {
    if (until()) return false;
    pause();
    clearLease();
    if (written_ == false && !lastError_) return true;
    attemptWrite(false);
  }
  return true;
}

std::optional<std::string> LidSleepLeaseKeeper::lastErrorDescription() const {
  if (!lastError_) return std::nullopt;
  return lastErrorText_;
}

std::optional<double> LidSleepLeaseKeeper::nextRetryUptime() const {
  if (!lastError_ || !failed_) return std::nullopt;
  return failed_->at + LidSleepLease::retrySpacing;
}

void LidSleepLeaseKeeper::write(bool disabled, bool evenIfJustFailed) {
  if (written_ == disabled && !lastError_) return;
  // Spaces retries of the same failing value however often we are called.
  if (!evenIfJustFailed && failed_ && failed_->disabled == disabled &&
      uptime_->uptime() - failed_->at < LidSleepLease::retrySpacing) {
    return;
  }
  attemptWrite(disabled);
}

void LidSleepLeaseKeeper::attemptWrite(bool disabled) {
  try {
    setting_->writeDisabled(disabled);
  } catch (...) {
    lastError_ = std::current_exception();
    lastErrorText_ = describeCurrentError();
    failed_ = FailedWrite{disabled, uptime_->uptime()};
    return;
  }
  written_ = disabled;
  lastError_ = nullptr;
  lastErrorText_.clear();
  failed_.reset();
}

void LidSleepLeaseKeeper::clearLease() {
  leaseExpiry_.reset();
  leaseUptimeExpiry_.reset();
}

}  // namespace wakeloft
