#include "helper/LidHelperDaemon.h"

#include <algorithm>

namespace wakeloft {

LidHelperDaemon::LidHelperDaemon(std::shared_ptr<LidSleepLeaseKeeper> keeper, std::shared_ptr<LidLeaseService> service,
                                 std::shared_ptr<LidSleepCheck> lidCheck, std::shared_ptr<DeadlineScheduler> tick,
                                 std::shared_ptr<const DateProvider> dates,
                                 std::shared_ptr<const UptimeProvider> uptime, std::function<void()> settled,
                                 std::shared_ptr<DeadlineRecheckNotifier> recheck)
    : keeper_(std::move(keeper)),
      service_(std::move(service)),
      lidCheck_(std::move(lidCheck)),
      tick_(std::move(tick)),
      dates_(std::move(dates)),
      uptime_(std::move(uptime)),
      settled_(std::move(settled)),
      recheck_(std::move(recheck)) {
  armTick();  // the keeper's first write of 0 may already be failing
  if (recheck_) recheck_->observe(weakSelf_([](LidHelperDaemon& self) { self.tick(); }));
}

LidLeaseService::Requests LidHelperDaemon::requests() {
  // The service queues and handles; its answer reaches us on the main loop,
  // where the outcome is settled before the client hears it.
  return [serve = service_->requests(), afterwards = weakSelf_([](LidHelperDaemon& self) { self.settle(); })](
             std::uint64_t client, LidLeaseRequest request, LidLeaseService::ReplyHandler reply) {
    serve(client, request, [afterwards, reply = std::move(reply)](LidLeaseService::Reply answer) {
      afterwards();
      if (reply) reply(std::move(answer));
    });
  };
}

void LidHelperDaemon::tick() {
  service_->checkLease();
  settle();
}

bool LidHelperDaemon::stop(const std::function<bool()>& until, const std::function<void()>& pause) {
  tick_->cancel();
  armed_.reset();
  const bool putBack = keeper_->revokeBeforeExit(until, pause);
  if (settled_) settled_();
  lidCheck_->settingSettled(keeper_->isSleepDisabled());
  return putBack;
}

void LidHelperDaemon::settle() {
  if (settled_) settled_();
  lidCheck_->settingSettled(keeper_->isSleepDisabled());
  armTick();
}

void LidHelperDaemon::armTick() {
  // Uptime moments become wall dates from now; the scheduler measures the
  // interval on a monotonic timer, so a clock change does not move them.
  const Date now = dates_->now();
  const double uptimeNow = uptime_->uptime();
  std::optional<Date> next;
  const auto consider = [&](Date at) { next = next ? std::min(*next, at) : at; };
  if (const auto lapse = service_->earliestLapse()) {
    consider(lapse->expiry);
    consider(now.adding(lapse->uptimeExpiry - uptimeNow));
  }
  if (const auto retry = service_->nextRetryUptime()) consider(now.adding(*retry - uptimeNow));

  // A timer already set for that moment stays: set again on every request,
  // a stream of requests that change nothing (status asks) would keep
  // pushing it past its moment, and a lapsed lease would never end.
  if (next == armed_) return;
  armed_ = next;
  if (next) {
    tick_->schedule(*next, weakSelf_([](LidHelperDaemon& self) {
      self.armed_.reset();  // fired: nothing is set any more
      self.tick();
    }));
  } else {
    tick_->cancel();
  }
}

}  // namespace wakeloft
