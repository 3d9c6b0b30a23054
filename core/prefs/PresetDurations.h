#pragma once

#include <array>
#include <optional>
#include <set>
#include <span>
#include <vector>

#include "session/AwakeDuration.h"

namespace wakeloft {

// Which lengths the panel offers as one-click presets: up to three of six
// candidates, starred in the settings menu. Lengths are compared by their
// seconds, exactly.
class PresetDurations {
 public:
  static const std::array<AwakeDuration, 6> candidates;
  static constexpr std::size_t pinnedCount = 3;
  static const std::array<AwakeDuration, 3> defaultChoice;

  // The one gate for every stored or requested choice: at most three
  // candidates, none twice; sorted ascending. Empty is a valid choice.
  static std::optional<std::vector<AwakeDuration>> validated(std::span<const double> seconds);
  // What was stored when it passes the gate, otherwise the default choice.
  static std::vector<AwakeDuration> pinnedFromSeconds(const std::optional<std::vector<double>>& seconds);

  // The default choice when `pinned` does not pass the gate.
  explicit PresetDurations(std::span<const AwakeDuration> pinned);

  // The starred lengths in ascending order.
  std::vector<AwakeDuration> pinned() const;
  bool isChosen(AwakeDuration duration) const;
  // A starred candidate can always be unstarred; another one only while
  // fewer than three are starred.
  bool canToggle(AwakeDuration duration) const;
  // Does nothing when the duration cannot be toggled.
  void toggle(AwakeDuration duration);

  static bool isCandidate(AwakeDuration duration);

  friend bool operator==(const PresetDurations&, const PresetDurations&) = default;

 private:
  // Only candidates' seconds ever get in, so no NaN upsets the ordering.
  std::set<double> chosen_;
};

}  // namespace wakeloft
