#pragma once

#include <memory>

#include "clock/ContinuousTimeProvider.h"
#include "clock/DateProvider.h"
#include "clock/UptimeProvider.h"

namespace wakeloft::testing {

// Clocks that move only when a test moves them.
struct ManualDateProvider final : DateProvider {
  Date current{1'700'000'000};
  Date now() const override { return current; }
};

struct ManualContinuousTimeProvider final : ContinuousTimeProvider {
  double current = 5'000;
  double continuousTime() const override { return current; }
};

struct ManualUptimeProvider final : UptimeProvider {
  double current = 1'000;
  double uptime() const override { return current; }
};

// One machine's three clocks, moved together so a test says what happened to
// the machine: time passed awake or asleep, or its wall clock was set.
struct ManualMachineClocks {
  std::shared_ptr<ManualDateProvider> dates = std::make_shared<ManualDateProvider>();
  std::shared_ptr<ManualContinuousTimeProvider> continuous = std::make_shared<ManualContinuousTimeProvider>();
  std::shared_ptr<ManualUptimeProvider> uptime = std::make_shared<ManualUptimeProvider>();

  Date now() const { return dates->current; }
  void pass(double seconds) {
    sleep(seconds);
    uptime->current += seconds;
  }
  // Uptime stands still while asleep; the continuous clock does not.
  void sleep(double seconds) {
    dates->current = dates->current.adding(seconds);
    continuous->current += seconds;
  }
  void setWallClock(double bySeconds) { dates->current = dates->current.adding(bySeconds); }
};

}  // namespace wakeloft::testing
