#pragma once

#include <functional>

namespace wakeloft {

// Tells its one handler, on the main thread, when the clocks may have jumped
// (after a wake, after a clock change) and deadlines must be judged again.
class DeadlineRecheckNotifier {
 public:
  virtual ~DeadlineRecheckNotifier() = default;
  // Replaces any earlier handler.
  virtual void observe(std::function<void()> handler) = 0;
};

}  // namespace wakeloft
