#pragma once

#include <functional>
#include <memory>

#include "clock/DeadlineRecheckNotifier.h"

namespace wakeloft {

// Tells its handler, on the main loop, when the wall clock was set: a timer
// on CLOCK_REALTIME that never runs out, armed with TFD_TIMER_CANCEL_ON_SET,
// so the kernel wakes it at every jump of the clock and at nothing else.
// Main thread only.
class ClockChangeNotifier final : public DeadlineRecheckNotifier {
 public:
  // Throws std::system_error when the timer cannot be made.
  ClockChangeNotifier();
  ~ClockChangeNotifier() override;
  ClockChangeNotifier(const ClockChangeNotifier&) = delete;
  ClockChangeNotifier& operator=(const ClockChangeNotifier&) = delete;

  void observe(std::function<void()> handler) override;

 private:
  struct Timer;
  std::unique_ptr<Timer> timer_;
};

}  // namespace wakeloft
