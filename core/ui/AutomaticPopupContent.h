#pragma once

#include <optional>
#include <string>
#include <vector>

#include "automatic/AutomaticRules.h"
#include "automatic/AutomaticSessionController.h"
#include "automatic/ScreenLockSetting.h"
#include "glyph/LayoutDirection.h"
#include "ui/LocalizedText.h"
#include "ui/TextCatalog.h"

namespace wakeloft {

// The Automatic popover, opened from the settings menu: a switch for each
// rule with a line saying what it does, the apps the app rule follows, the
// schedule's days and hours, whether any rule or all of them must hold, and
// whether a locked screen ends sessions. Every change goes through the
// automatic controller, which keeps it and applies it at once, or refuses
// settings it cannot keep.
struct AutomaticPopupContent {
  static constexpr double width = 320;
  static constexpr double rowSpacing = 4;
  static constexpr double sectionSpacing = 12;
  static constexpr double appIconSize = 16;

  struct Switch {
    LocalizedText title;
    bool isOn;
    // Shown under the switch and read by VoiceOver as its help.
    LocalizedText hint;
    // Fixed by a configuration profile: shown, not changeable.
    bool isForced = false;
    friend bool operator==(const Switch&, const Switch&) = default;
  };
  struct RuleSwitch {
    AutomaticRules::Rule rule;
    Switch toggle;
    friend bool operator==(const RuleSwitch&, const RuleSwitch&) = default;
  };
  struct App {
    std::string bundleIdentifier;
    LocalizedText name;
    // For its icon; the app may have moved since.
    std::string path;
    // What VoiceOver calls the button that removes it.
    LocalizedText removeLabel;
    friend bool operator==(const App&, const App&) = default;
  };
  struct Day {
    Schedule::Weekday weekday;
    // On the toggle, and what VoiceOver reads.
    LocalizedText shortName;
    LocalizedText fullName;
    bool isOn;
    friend bool operator==(const Day&, const Day&) = default;
  };
  struct CombinationChoice {
    AutomaticRules::Combination combination;
    LocalizedText label;
    friend bool operator==(const CombinationChoice&, const CombinationChoice&) = default;
  };

  // What the open panel read from the bundle the user chose; absent fields
  // were not in its information property list.
  struct ChosenBundle {
    std::optional<std::string> bundleIdentifier;
    std::optional<std::string> displayName;
    std::optional<std::string> bundleName;
    std::string path;
  };

  LocalizedText title;
  // Under the title while a profile fixes anything here.
  std::optional<LocalizedText> managedNote = std::nullopt;
  // A profile fixes the rules as a whole: every control but the lock's is
  // shown, not changeable.
  bool rulesAreForced = false;
  // In the order the rules are named.
  std::vector<RuleSwitch> rules = {};
  // Under the app rule's switch.
  std::vector<App> apps = {};
  LocalizedText noApps = TextCatalog::noAppsChosen;
  LocalizedText addApp = TextCatalog::addApp;
  // False once the list holds as many apps as can be kept, or while the
  // rules are fixed.
  bool canAddApp = true;
  // Under the schedule's switch: the days in the locale's week order, then
  // the two times, each in minutes after midnight.
  std::vector<Day> days = {};
  LocalizedText startLabel = TextCatalog::scheduleFrom;
  int start = 0;
  LocalizedText endLabel = TextCatalog::scheduleTo;
  int end = 0;
  // The days and the times read the other way round in Arabic.
  LayoutDirection layoutDirection = LayoutDirection::leftToRight;
  LocalizedText combinationTitle = TextCatalog::automaticCombination;
  std::vector<CombinationChoice> combinations = {};
  AutomaticRules::Combination combination = AutomaticRules::Combination::any;
  // Only where the screen lock is watched.
  std::optional<Switch> stopWhenScreenLocks = std::nullopt;
  // Command-line tools are not apps: the way to keep awake for them.
  LocalizedText commandLineNote = TextCatalog::commandLineToolsNote;

  // Names and the week's order are written for `locale`, the app's resolved
  // one.
  static AutomaticPopupContent current(const AutomaticSessionController& automatic, const std::string& locale,
                                       const ScreenLockSetting* screenLock = nullptr);

  // Each returns whether the controller kept the change.
  static bool setRule(AutomaticRules::Rule rule, bool on, AutomaticSessionController& automatic);
  static bool setWeekday(Schedule::Weekday day, bool on, AutomaticSessionController& automatic);
  static bool setStart(int minutes, AutomaticSessionController& automatic);
  static bool setEnd(int minutes, AutomaticSessionController& automatic);
  static bool choose(AutomaticRules::Combination combination, AutomaticSessionController& automatic);
  static bool removeApp(const std::string& bundleIdentifier, AutomaticSessionController& automatic);
  // Adds the chosen app, named by its display name, its bundle name or its
  // file name; one already in the list stays as it is. Why it could not be
  // added otherwise, to show under the list.
  static std::optional<LocalizedText> addChosenApp(const ChosenBundle& bundle, AutomaticSessionController& automatic);
  static void setStopsWhenScreenLocks(bool on, ScreenLockSetting& screenLock);

  // Whether the open panel lets the user pick an item: folders to look
  // inside, and app bundles; no other package, and no plain file.
  static bool isChoosableInOpenPanel(const std::string& path, bool isDirectory, bool isPackage);

  friend bool operator==(const AutomaticPopupContent&, const AutomaticPopupContent&) = default;
};

}  // namespace wakeloft
