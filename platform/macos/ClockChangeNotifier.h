#pragma once

#include <functional>
#include <memory>

#include "clock/DeadlineRecheckNotifier.h"

namespace wakeloft {

// Tells its handler, on the main queue, when the wall clock was set: the
// system's notification for that (notify(3), kNotifyClockSet), which a
// daemon receives without AppKit. Nothing runs while the clock runs on.
// Main thread only.
class ClockChangeNotifier final : public DeadlineRecheckNotifier {
 public:
  // Throws std::runtime_error when the system refuses the registration.
  ClockChangeNotifier();
  ~ClockChangeNotifier() override;
  ClockChangeNotifier(const ClockChangeNotifier&) = delete;
  ClockChangeNotifier& operator=(const ClockChangeNotifier&) = delete;

  void observe(std::function<void()> handler) override;

 private:
  // Shared with the registration's block, which may already be queued when
  // this notifier goes.
  std::shared_ptr<std::function<void()>> handler_;
  int token_;
};

}  // namespace wakeloft
