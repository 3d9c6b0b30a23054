#pragma once

#include <optional>
#include <vector>

namespace wakeloft {

// Keeps the starred lengths, in seconds, across launches. Absent means
// nothing was ever stored. Main thread only.
class PresetDurationStore {
 public:
  virtual ~PresetDurationStore() = default;
  virtual std::optional<std::vector<double>> pinnedSeconds() const = 0;
  // Absent removes what was stored.
  virtual void setPinnedSeconds(std::optional<std::vector<double>> seconds) = 0;
};

}  // namespace wakeloft
