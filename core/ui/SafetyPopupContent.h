#pragma once

#include <optional>
#include <string>
#include <vector>

#include "lid/DeepwakeAutomationConsent.h"
#include "lid/DeepwakeGuardrails.h"
#include "lid/LidAwakeController.h"
#include "ui/LocalizedText.h"
#include "ui/TextCatalog.h"

namespace wakeloft {

// The Safety popover, opened from the settings menu: Deepwake's battery
// floor as a choice, its three switches, and one line explaining each, then
// whether scripts and Shortcuts may turn it on. A change is stored and
// applied at once.
struct SafetyPopupContent {
  static constexpr double width = 280;
  static constexpr double rowSpacing = 4;
  static constexpr double sectionSpacing = 12;

  struct FloorChoice {
    // 0 is off: "Never".
    int percent;
    LocalizedText label;
    friend bool operator==(const FloorChoice&, const FloorChoice&) = default;
  };
  enum class Setting { stopsInLowPowerMode, stopsWhenLidOpens, onlyOnPowerAdapter, automationMayTurnOn };
  struct Switch {
    Setting setting;
    LocalizedText title;
    bool isOn;
    // Shown under the switch, and the switch's accessibility help, where
    // VoiceOver reads it instead of as a text of its own.
    LocalizedText hint;
    // Set by a configuration profile: disabled, with `managedNote` under it.
    bool isForced = false;
    friend bool operator==(const Switch&, const Switch&) = default;
  };

  LocalizedText title;
  LocalizedText floorTitle;
  std::vector<FloorChoice> floors;
  int chosenFloor;
  bool isFloorForced;
  LocalizedText floorHint;
  std::vector<Switch> switches;
  // Heat has no switch: it always stops Deepwake.
  LocalizedText heatNote;
  // Whether scripts and Shortcuts may turn Deepwake on, last; only where
  // automation reaches the app.
  std::optional<Switch> automation = std::nullopt;
  // Under each control a profile sets.
  LocalizedText managedNote = TextCatalog::setByOrganization;

  // Percentages are written for `locale`, the app's resolved one. The
  // automation switch is there only where automation reaches the app.
  static SafetyPopupContent current(const LidAwakeController& lid, const std::string& locale,
                                    const DeepwakeAutomationConsent* consent = nullptr);

  static void chooseFloor(int percent, LidAwakeController& lid);
  static void set(Setting setting, bool on, LidAwakeController& lid, DeepwakeAutomationConsent* consent = nullptr);

  friend bool operator==(const SafetyPopupContent&, const SafetyPopupContent&) = default;
};

}  // namespace wakeloft
