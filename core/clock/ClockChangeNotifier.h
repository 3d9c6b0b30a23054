#pragma once

#include <functional>
#include <memory>

#include "clock/DeadlineRecheckNotifier.h"

namespace wakeloft {

// Tells its handler, on the main thread, when the wall clock was set, and at
// nothing else. Defined by the platform layer: on Linux a timer on
// CLOCK_REALTIME that never runs out, armed with TFD_TIMER_CANCEL_ON_SET, so
// the kernel wakes it at every jump of the clock; on macOS the system's
// notification for that (notify(3), kNotifyClockSet), which a daemon receives
// without AppKit. Main thread only.
class ClockChangeNotifier final : public DeadlineRecheckNotifier {
 public:
  // Throws std::system_error when the system refuses the watch.
  ClockChangeNotifier();
  ~ClockChangeNotifier() override;
  ClockChangeNotifier(const ClockChangeNotifier&) = delete;
  ClockChangeNotifier& operator=(const ClockChangeNotifier&) = delete;

  void observe(std::function<void()> handler) override;

 private:
  struct Watch;  // the platform's own
  std::unique_ptr<Watch> watch_;
};

}  // namespace wakeloft
