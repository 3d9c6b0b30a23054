#include "prefs/PresetDurations.h"

#include <algorithm>

namespace wakeloft {

namespace {

std::vector<AwakeDuration> durations(const std::set<double>& seconds) {
  std::vector<AwakeDuration> result;
  result.reserve(seconds.size());
  for (const double s : seconds) result.push_back({s});
  return result;
}

std::vector<double> secondsOf(std::span<const AwakeDuration> durations) {
  std::vector<double> seconds;
  seconds.reserve(durations.size());
  for (const auto& d : durations) seconds.push_back(d.seconds);
  return seconds;
}

}  // namespace

const std::array<AwakeDuration, 6> PresetDurations::candidates = {
    {{1800}, {3600}, {7200}, {14400}, {21600}, {28800}}};
const std::array<AwakeDuration, 3> PresetDurations::defaultChoice = AwakeDuration::presets;

bool PresetDurations::isCandidate(AwakeDuration duration) {
  return std::find(candidates.begin(), candidates.end(), duration) != candidates.end();
}

std::optional<std::vector<AwakeDuration>> PresetDurations::validated(std::span<const double> seconds) {
  if (seconds.size() > pinnedCount) return std::nullopt;
  // Candidates first: that keeps NaN out of the set below.
  for (const double s : seconds) {
    if (!isCandidate({s})) return std::nullopt;
  }
  const std::set<double> unique(seconds.begin(), seconds.end());
  if (unique.size() < seconds.size()) return std::nullopt;
  return durations(unique);
}

std::vector<AwakeDuration> PresetDurations::pinnedFromSeconds(const std::optional<std::vector<double>>& seconds) {
  if (seconds) {
    if (auto valid = validated(*seconds)) return std::move(*valid);
  }
  return {defaultChoice.begin(), defaultChoice.end()};
}

PresetDurations::PresetDurations(std::span<const AwakeDuration> pinned) {
  const auto seconds = secondsOf(pinned);
  const auto valid = validated(seconds);
  const std::span<const AwakeDuration> chosen = valid ? std::span<const AwakeDuration>(*valid) : defaultChoice;
  for (const auto& d : chosen) chosen_.insert(d.seconds);
}

std::vector<AwakeDuration> PresetDurations::pinned() const { return durations(chosen_); }

// Compared one by one: a set lookup would take NaN for whichever element it
// met first.
bool PresetDurations::isChosen(AwakeDuration duration) const {
  return std::find(chosen_.begin(), chosen_.end(), duration.seconds) != chosen_.end();
}

bool PresetDurations::canToggle(AwakeDuration duration) const {
  if (!isCandidate(duration)) return false;
  return isChosen(duration) || chosen_.size() < pinnedCount;
}

void PresetDurations::toggle(AwakeDuration duration) {
  if (!canToggle(duration)) return;
  if (!chosen_.erase(duration.seconds)) chosen_.insert(duration.seconds);
}

}  // namespace wakeloft
