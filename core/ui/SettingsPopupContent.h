#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "prefs/PresetDurationsController.h"
#include "session/AwakeDuration.h"
#include "ui/LocalizedText.h"

namespace wakeloft {

// The preset chooser: one starrable row per duration that may be starred.
struct SettingsPopupContent {
  static constexpr double rowSpacing = 6;

  struct Row {
    AwakeDuration duration;
    LocalizedText label;
    // The duration in full words, for VoiceOver.
    LocalizedText spokenLabel;
    bool isStarred = false;

    // "star.fill", shown yellow, when starred; "star" when not.
    std::string_view symbolName() const { return isStarred ? "star.fill" : "star"; }
    friend bool operator==(const Row&, const Row&) = default;
  };

  LocalizedText title;
  std::vector<Row> rows;
  LocalizedText hint;
  // Every row's accessibility help: what a star does.
  LocalizedText rowHelp;

  // Durations are put into words for `locale`, the app's resolved one.
  static SettingsPopupContent current(const PresetDurationsController& presets, const std::string& locale);

  // A row was switched: the star goes on or off, unless that would make a
  // fourth, and the choice is stored.
  static void toggle(AwakeDuration duration, PresetDurationsController& presets);

  friend bool operator==(const SettingsPopupContent&, const SettingsPopupContent&) = default;
};

}  // namespace wakeloft
