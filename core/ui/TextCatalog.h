#pragma once

#include <span>

#include "ui/TextKey.h"

namespace wakeloft {

// Every text the user interface can show, with its table. The English
// tables in the app's resources hold exactly these keys, which the tests
// check both ways.
class TextCatalog {
 public:
  static std::span<const TextKey> all();

  // --- Failures ---
  static constexpr TextKey assertionRefused{"macOS couldn't keep your Mac awake (IOKit error %d).", TextTable::standard};
  static constexpr TextKey lidHelperUnavailable{"Deepwake can't start because its helper is unavailable.",
                                                TextTable::deepwake};
  static constexpr TextKey lidHelperRequiresApproval{
      "To use Deepwake, allow Wakeloft in System Settings, then turn it on again.", TextTable::deepwake};

  // --- Lid helper refusals ---
  static constexpr TextKey settingUnreadable{
      "Deepwake can't start because its helper couldn't read the sleep setting, so nothing was changed (%@).",
      TextTable::deepwake};
  static constexpr TextKey settingUnwritten{
      "Deepwake can't start because its helper couldn't change the sleep setting (%@).", TextTable::deepwake};
  static constexpr TextKey settingNotPutBack{
      "Your Mac may stay awake with the lid closed. Deepwake's helper couldn't restore the sleep setting and is still "
      "trying (%@).",
      TextTable::deepwake};
  static constexpr TextKey deadlineNotANumber{
      "Deepwake can't start because its helper was sent an end time it couldn't read.", TextTable::deepwake};
  static constexpr TextKey settingOnElsewhere{
      "Deepwake can't start because something other than Wakeloft already keeps your Mac awake with the lid closed. "
      "That setting was left as it is.",
      TextTable::deepwake};
  static constexpr TextKey settingTurnedOffElsewhere{
      "Deepwake stopped because something other than Wakeloft changed the sleep setting. Closing the lid works as "
      "usual again.",
      TextTable::deepwake};

  // --- Quit confirmation ---
  static constexpr TextKey quitAndStopAwakeMode{"Quit and stop awake mode?", TextTable::standard};
  static constexpr TextKey awakeModeQuitConsequence{
      "Your Mac can fall asleep on its own again. Awake mode turns back on the next time you open Wakeloft.",
      TextTable::standard};
  static constexpr TextKey quit{"Quit", TextTable::standard};
  static constexpr TextKey cancel{"Cancel", TextTable::standard};
  static constexpr TextKey leftInThisSession{"%@ left in this session.", TextTable::standard};
  static constexpr TextKey quitAndEndDeepwakeQuestion{"Quit and end Deepwake?", TextTable::deepwake};
  static constexpr TextKey deepwakeQuitConsequence{
      "Your Mac can sleep again with the lid open or closed. Awake mode turns back on the next time you open "
      "Wakeloft. Deepwake stays off.",
      TextTable::deepwake};
  static constexpr TextKey quitAndEndDeepwake{"Quit and end Deepwake", TextTable::deepwake};
};

}  // namespace wakeloft
