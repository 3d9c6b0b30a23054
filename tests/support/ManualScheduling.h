#pragma once

#include <functional>
#include <optional>
#include <utility>

#include "clock/DeadlineRecheckNotifier.h"
#include "clock/DeadlineScheduler.h"

namespace wakeloft::testing {

// A deadline scheduler whose timer fires when the test says so.
struct ManualDeadlineScheduler final : DeadlineScheduler {
  std::optional<Date> pending;
  std::function<void()> action;
  int scheduleCount = 0;

  void schedule(Date at, std::function<void()> newAction) override {
    ++scheduleCount;
    pending = at;
    action = std::move(newAction);
  }
  void cancel() override {
    pending.reset();
    action = nullptr;
  }
  // Fires the pending timer, as the main loop would.
  void fire() {
    auto fired = std::exchange(action, nullptr);
    pending.reset();
    if (fired) fired();
  }
};

struct ManualRecheckNotifier final : DeadlineRecheckNotifier {
  std::function<void()> handler;
  void observe(std::function<void()> newHandler) override { handler = std::move(newHandler); }
  void post() {
    if (handler) handler();
  }
};

}  // namespace wakeloft::testing
