#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "prefs/PresetDurationStore.h"

namespace wakeloft {

class InMemoryPresetDurationStore final : public PresetDurationStore {
 public:
  explicit InMemoryPresetDurationStore(std::optional<std::vector<double>> initial = std::nullopt)
      : stored(std::move(initial)) {}

  std::optional<std::vector<double>> pinnedSeconds() const override { return stored; }
  void setPinnedSeconds(std::optional<std::vector<double>> seconds) override { stored = std::move(seconds); }

  std::optional<std::vector<double>> stored;
};

}  // namespace wakeloft
