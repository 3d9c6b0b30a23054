#pragma once

#include <functional>

namespace wakeloft {

// Tells its one handler, on the main thread, whenever the machine conditions
// may have changed. It never reads the conditions itself.
class MachineConditionsNotifier {
 public:
  virtual ~MachineConditionsNotifier() = default;
  // Replaces any earlier handler.
  virtual void observe(std::function<void()> handler) = 0;
};

}  // namespace wakeloft
