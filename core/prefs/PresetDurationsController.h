#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "base/Observation.h"
#include "prefs/PresetDurationStore.h"
#include "session/AwakeDuration.h"

namespace wakeloft {

// The starred preset lengths that the panel and the settings menu bind to.
// Main thread only.
class PresetDurationsController {
 public:
  // Reads the store; a missing or invalid choice reads as the default one,
  // which is not written back.
  explicit PresetDurationsController(std::shared_ptr<PresetDurationStore> store);
  PresetDurationsController(const PresetDurationsController&) = delete;
  PresetDurationsController& operator=(const PresetDurationsController&) = delete;

  // Stores and shows a valid choice; ignores any other.
  void pin(const std::vector<AwakeDuration>& durations);

  [[nodiscard]] Subscription observe(std::function<void()> handler) { return changed_.observe(std::move(handler)); }

  // Ascending.
  const std::vector<AwakeDuration>& pinned() const { return pinned_; }
  PresetDurationStore& store() const { return *store_; }

 private:
  std::shared_ptr<PresetDurationStore> store_;
  ChangeSignal changed_;
  Published<std::vector<AwakeDuration>> pinned_;
};

}  // namespace wakeloft
