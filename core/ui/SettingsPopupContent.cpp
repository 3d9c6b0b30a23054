#include "ui/SettingsPopupContent.h"

#include <algorithm>

#include "prefs/PresetDurations.h"
#include "ui/TextCatalog.h"

namespace wakeloft {

SettingsPopupContent SettingsPopupContent::current(const PresetDurationsController& presets,
                                                   const std::string& locale) {
  const auto& pinned = presets.pinned();
  SettingsPopupContent content{TextCatalog::presetDurations, {}, TextCatalog::presetDurationsHint,
                               TextCatalog::showsInPanel};
  for (const auto& duration : PresetDurations::candidates) {
    const bool starred = std::find(pinned.begin(), pinned.end(), duration) != pinned.end();
    content.rows.push_back({duration, LocalizedText::verbatim(duration.label(locale)),
                            LocalizedText::verbatim(duration.spokenLabel(locale)), starred});
  }
  return content;
}

void SettingsPopupContent::toggle(AwakeDuration duration, PresetDurationsController& presets) {
  PresetDurations choice(presets.pinned());
  choice.toggle(duration);
  presets.pin(choice.pinned());
}

}  // namespace wakeloft
