#pragma once

#include <functional>

namespace wakeloft {

// Tells its one handler, on the main thread, whenever a configuration profile
// may have arrived, changed or gone. It never reads the preferences itself.
class ManagedPreferencesNotifier {
 public:
  virtual ~ManagedPreferencesNotifier() = default;
  // Replaces any earlier handler.
  virtual void observe(std::function<void()> handler) = 0;
};

}  // namespace wakeloft
