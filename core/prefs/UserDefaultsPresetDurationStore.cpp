#include "prefs/UserDefaultsPresetDurationStore.h"

namespace wakeloft {

std::optional<std::vector<double>> UserDefaultsPresetDurationStore::pinnedSeconds() const {
  const auto object = defaults_.object(key);
  if (!object) return std::nullopt;
  const auto* elements = object->get<DefaultsValue::Array>();
  if (!elements) return std::nullopt;
  std::vector<double> seconds;
  seconds.reserve(elements->size());
  for (const auto& element : *elements) {
    // Booleans are not numbers here, whatever the platform's bridging says.
    const auto number = element.number();
    if (!number) return std::nullopt;
    seconds.push_back(*number);
  }
  return seconds;
}

void UserDefaultsPresetDurationStore::setPinnedSeconds(std::optional<std::vector<double>> seconds) {
  if (!seconds) {
    defaults_.remove(key);
    return;
  }
  DefaultsValue::Array elements;
  elements.reserve(seconds->size());
  for (const double s : *seconds) elements.emplace_back(s);
  defaults_.set(key, std::move(elements));
}

}  // namespace wakeloft
