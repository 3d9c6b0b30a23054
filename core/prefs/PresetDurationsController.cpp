#include "prefs/PresetDurationsController.h"

#include "prefs/PresetDurations.h"

namespace wakeloft {

PresetDurationsController::PresetDurationsController(std::shared_ptr<PresetDurationStore> store)
    : store_(std::move(store)), pinned_(changed_, PresetDurations::pinnedFromSeconds(store_->pinnedSeconds())) {}

void PresetDurationsController::pin(const std::vector<AwakeDuration>& durations) {
  std::vector<double> seconds;
  seconds.reserve(durations.size());
  for (const auto& d : durations) seconds.push_back(d.seconds);
  auto valid = PresetDurations::validated(seconds);
  if (!valid) return;

  std::vector<double> sorted;
  sorted.reserve(valid->size());
  for (const auto& d : *valid) sorted.push_back(d.seconds);
  store_->setPinnedSeconds(std::move(sorted));
  pinned_.set(std::move(*valid));
}

}  // namespace wakeloft
