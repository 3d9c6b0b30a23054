#pragma once

#include <span>

#include "ui/TextKey.h"

namespace wakeloft {

// Every text the user interface can show, with its table. The English
// tables in the app's resources hold exactly these keys, which the tests
// check both ways.
//
// Numbers reach a text as words in the locale's digits ("%@", from
// `NumberWords`), percentages with the locale's sign; only a system's error
// code is a "%d" of its own. A counted text, whose words change with a
// number, is a key with one "%d" filled by a `TextCount`: its English
// "other" wording is the key, in the .strings tables as every key is, and
// its wording per plural category goes into the same table's .stringsdict
// in each language (en and de: one, other; ar: zero, one, two, few, many,
// other). The tests check that each language has its categories.
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

  // --- Menu-bar item ---
  static constexpr TextKey iconOff{"Wakeloft: off", TextTable::standard};
  static constexpr TextKey iconOn{"Wakeloft: on", TextTable::standard};
  static constexpr TextKey iconOnWithTimerRunning{"Wakeloft: on, timer running", TextTable::standard};
  static constexpr TextKey iconOnWithLidClosed{"Wakeloft: Deepwake on", TextTable::deepwake};
  static constexpr TextKey iconOnWithLidClosedAndTimerRunning{"Wakeloft: Deepwake on, timer running",
                                                              TextTable::deepwake};
  static constexpr TextKey iconWithUpdateWaiting{"%@, update waiting", TextTable::standard};

  // --- Awake panel ---
  static constexpr TextKey wakeloft{"Wakeloft", TextTable::standard};
  static constexpr TextKey spokenOff{"Wakeloft, off", TextTable::standard};
  static constexpr TextKey spokenOn{"Wakeloft, on", TextTable::standard};
  static constexpr TextKey spokenLessThanAMinuteLeft{"Wakeloft, on, less than a minute left", TextTable::standard};
  static constexpr TextKey spokenTimeLeft{"Wakeloft, on, %@ left", TextTable::standard};
  static constexpr TextKey statusOnWithTimeLeft{"On \u00B7 %@ left", TextTable::standard};
  static constexpr TextKey statusOn{"On", TextTable::standard};
  static constexpr TextKey statusOff{"Off", TextTable::standard};
  static constexpr TextKey sleepsNormally{"Your Mac can sleep as usual.", TextTable::standard};
  static constexpr TextKey awakeIndefinitely{
      "Your Mac won't fall asleep on its own. Closing the lid still puts it to sleep.", TextTable::standard};
  static constexpr TextKey awakeUntilSessionEnds{
      "Your Mac won't fall asleep until the session ends. Closing the lid still puts it to sleep.",
      TextTable::standard};
  static constexpr TextKey awakeWithLidClosedIndefinitely{"Your Mac won't fall asleep, even with the lid closed.",
                                                          TextTable::deepwake};
  static constexpr TextKey awakeWithLidClosedUntilSessionEnds{
      "Your Mac won't fall asleep until the session ends, even with the lid closed.", TextTable::deepwake};
  static constexpr TextKey turnOn{"Turn On", TextTable::standard};
  static constexpr TextKey turnOff{"Turn Off", TextTable::standard};
  static constexpr TextKey stayAwakeWithoutTimer{"Stay awake without a timer", TextTable::standard};
  static constexpr TextKey stayAwakeFor{"Stay awake for", TextTable::standard};
  static constexpr TextKey deepwake{"Deepwake", TextTable::deepwake};
  static constexpr TextKey deepwakeCaption{"Your Mac stays awake with the lid closed.", TextTable::deepwake};
  static constexpr TextKey heatWarning{
      "With the lid shut and no display attached, heat can build up. Keep your Mac out of bags and other enclosed "
      "spaces while it is working.",
      TextTable::deepwake};
  static constexpr TextKey iUnderstand{"I understand", TextTable::deepwake};
  static constexpr TextKey iUnderstandTheHeatWarning{"I understand the heat warning", TextTable::deepwake};
  static constexpr TextKey runsTranslocated{
      "Deepwake is off while Wakeloft runs from the copy macOS made of your download. Move Wakeloft to "
      "Applications, then open it from there.",
      TextTable::deepwake};
  static constexpr TextKey showApplicationsFolder{"Show Applications Folder", TextTable::deepwake};
  static constexpr TextKey noHeatPath{
      "On battery with no display attached. Keep your Mac uncovered so heat can escape.", TextTable::deepwake};
  static constexpr TextKey dontRetry{"Don't retry when Wakeloft opens", TextTable::standard};
  static constexpr TextKey openAtLogin{"Open at Login", TextTable::standard};
  static constexpr TextKey approveInSystemSettings{"Approve Wakeloft in System Settings.", TextTable::standard};
  static constexpr TextKey notInApplications{
      "Wakeloft isn't in Applications, so it may not open at your next login. Move it to Applications, then turn "
      "this back on.",
      TextTable::standard};
  static constexpr TextKey openLoginItemsAndExtensions{"Open Login Items & Extensions\u2026", TextTable::standard};
  static constexpr TextKey openLoginItems{"Open Login Items\u2026", TextTable::standard};
  static constexpr TextKey spokenError{"Error: %@", TextTable::standard};
  static constexpr TextKey keepScreenOn{"Keep the Screen On", TextTable::standard};
  static constexpr TextKey keepScreenOnHelp{
      "A screen kept on also keeps the screen saver and automatic locking from starting.", TextTable::standard};
  static constexpr TextKey screenOnRefused{"macOS couldn't keep your screen on (IOKit error %d).",
                                           TextTable::standard};

  // --- Settings menu and its popovers ---
  static constexpr TextKey settings{"Settings", TextTable::standard};
  static constexpr TextKey choosePresetDurations{"Choose preset durations\u2026", TextTable::standard};
  static constexpr TextKey aboutWakeloft{"About Wakeloft", TextTable::standard};
  static constexpr TextKey checkForUpdates{"Check for Updates\u2026", TextTable::standard};
  static constexpr TextKey installUpdate{"Install Version %@\u2026", TextTable::standard};
  static constexpr TextKey settingsWithUpdateWaiting{"Settings, version %@ is ready to install", TextTable::standard};
  static constexpr TextKey sendFeedback{"Send Feedback", TextTable::standard};
  static constexpr TextKey quitWakeloft{"Quit Wakeloft", TextTable::standard};
  static constexpr TextKey presetDurations{"Preset durations", TextTable::standard};
  static constexpr TextKey showsInPanel{"Shows this duration in the panel", TextTable::standard};
  static constexpr TextKey presetDurationsHint{"Star up to three. If you don't star any, the panel shows no presets.",
                                               TextTable::standard};
  static constexpr TextKey version{"Version %@", TextTable::standard};

  // --- Deepwake guardrails: in the panel and in the Safety popover ---
  static constexpr TextKey stoppedAtBatteryFloor{"Deepwake stopped because the battery fell to %@.",
                                                 TextTable::deepwake};
  static constexpr TextKey stoppedInLowPowerMode{"Deepwake stopped because Low Power Mode came on.",
                                                 TextTable::deepwake};
  static constexpr TextKey stoppedByHeat{
      "Deepwake stopped because your Mac got too hot. With the lid closed, it can sleep now.", TextTable::deepwake};
  static constexpr TextKey stoppedWhenLidOpened{"Deepwake stopped because the lid was opened.", TextTable::deepwake};
  static constexpr TextKey refusedAtBatteryFloor{"Deepwake can't stay on while the battery is at %@ or less.",
                                                 TextTable::deepwake};
  static constexpr TextKey refusedInLowPowerMode{"Deepwake can't stay on while Low Power Mode is on.",
                                                 TextTable::deepwake};
  static constexpr TextKey refusedByHeat{"Deepwake can't stay on while your Mac is this hot.", TextTable::deepwake};
  static constexpr TextKey pausedWaitingForPower{
      "Paused, waiting for power. Deepwake goes on again when your Mac is plugged in.", TextTable::deepwake};
  static constexpr TextKey runningHot{"Your Mac is running hot. Deepwake stops if it gets any hotter.",
                                      TextTable::deepwake};
  static constexpr TextKey onBatteryWithFloor{"On battery at %1$@. Deepwake stops at %2$@.", TextTable::deepwake};
  static constexpr TextKey safetyMenuItem{"Safety\u2026", TextTable::standard};
  static constexpr TextKey safety{"Safety", TextTable::standard};
  static constexpr TextKey batteryFloor{"Stop at battery level", TextTable::standard};
  static constexpr TextKey batteryFloorPercent{"At %@", TextTable::standard};
  static constexpr TextKey batteryFloorNever{"Never", TextTable::standard};
  static constexpr TextKey batteryFloorHint{"On battery, Deepwake stops when the charge falls to this level.",
                                            TextTable::deepwake};
  static constexpr TextKey stopInLowPowerMode{"Stop in Low Power Mode", TextTable::standard};
  static constexpr TextKey stopInLowPowerModeHint{"Deepwake stops when Low Power Mode comes on.", TextTable::deepwake};
  static constexpr TextKey stopWhenLidOpens{"Stop when the lid opens", TextTable::standard};
  static constexpr TextKey stopWhenLidOpensHint{"Deepwake stops when you open the lid again.", TextTable::deepwake};
  static constexpr TextKey onlyOnPowerAdapter{"Only on power adapter", TextTable::standard};
  static constexpr TextKey onlyOnPowerAdapterHint{
      "On battery, Deepwake pauses and goes on again when you plug in.", TextTable::deepwake};
  static constexpr TextKey heatAlwaysStops{"Deepwake always stops when your Mac gets critically hot.",
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
  // A session held only for processes may not come back: no promise.
  static constexpr TextKey awakeModeQuitConsequenceForProcesses{"Your Mac can fall asleep on its own again.",
                                                                TextTable::standard};
  static constexpr TextKey deepwakeQuitConsequenceForProcesses{
      "Your Mac can sleep again with the lid open or closed. Deepwake stays off.", TextTable::deepwake};

  // --- Deepwake from scripts and Shortcuts ---
  static constexpr TextKey deepwakeAutomationQuestion{"Allow scripts and Shortcuts to turn on Deepwake?",
                                                      TextTable::deepwake};
  static constexpr TextKey allow{"Allow", TextTable::standard};
  static constexpr TextKey dontAllow{"Don't Allow", TextTable::standard};
  static constexpr TextKey deepwakeAutomationSwitch{"Scripts and Shortcuts can turn on Deepwake", TextTable::deepwake};
  static constexpr TextKey deepwakeAutomationHint{
      "Addresses and the wakeloft command can turn Deepwake on without asking. Turning it off never needs this.",
      TextTable::deepwake};

  // --- Macs managed by an organisation ---
  static constexpr TextKey setByOrganization{"Set by your organization", TextTable::standard};

  // --- Sessions bound to a process (automation); %@ last is the process's name ---
  static constexpr TextKey statusOnUntilProcessEnds{"On \u00B7 until \u201C%@\u201D ends", TextTable::standard};
  static constexpr TextKey statusOnWithTimeLeftOrUntilProcessEnds{"On \u00B7 %@ left or until \u201C%@\u201D ends",
                                                                  TextTable::standard};
  static constexpr TextKey spokenOnUntilProcessEnds{"Wakeloft, on, until \u201C%@\u201D ends", TextTable::standard};
  static constexpr TextKey spokenTimeLeftOrUntilProcessEnds{"Wakeloft, on, %@ left or until \u201C%@\u201D ends",
                                                            TextTable::standard};
  static constexpr TextKey spokenLessThanAMinuteLeftOrUntilProcessEnds{
      "Wakeloft, on, less than a minute left or until \u201C%@\u201D ends", TextTable::standard};
  // Counted: %d is how many processes the session waits for, when more than
  // one; they are counted only while none has an end, so there is no time left.
  static constexpr TextKey statusOnUntilProcessesEnd{"On \u00B7 until %d processes end", TextTable::standard};
  static constexpr TextKey spokenOnUntilProcessesEnd{"Wakeloft, on, until %d processes end", TextTable::standard};
  // --- The Automatic popover: rules that keep the Mac awake by themselves ---
  static constexpr TextKey automaticMenuItem{"Automatic\u2026", TextTable::standard};
  static constexpr TextKey automatic{"Automatic", TextTable::standard};
  static constexpr TextKey whileExternalDisplay{"While a display is connected", TextTable::standard};
  static constexpr TextKey whileExternalDisplayHint{
      "Keeps your Mac awake while an external display is connected, even a mirrored or sleeping one.",
      TextTable::standard};
  static constexpr TextKey whileOnPowerAdapter{"While on power adapter", TextTable::standard};
  static constexpr TextKey whileOnPowerAdapterHint{"Keeps your Mac awake while it's plugged in.", TextTable::standard};
  static constexpr TextKey whileAppsRun{"While these apps are open", TextTable::standard};
  static constexpr TextKey whileAppsRunHint{"Keeps your Mac awake while any of the apps below is open.",
                                            TextTable::standard};
  static constexpr TextKey onSchedule{"On a schedule", TextTable::standard};
  static constexpr TextKey onScheduleHint{"Keeps your Mac awake on the chosen days, from the first time to the second.",
                                          TextTable::standard};
  static constexpr TextKey noAppsChosen{"No apps chosen", TextTable::standard};
  static constexpr TextKey addApp{"Add App\u2026", TextTable::standard};
  static constexpr TextKey removeApp{"Remove \u201C%@\u201D", TextTable::standard};
  static constexpr TextKey appWithoutIdentifier{
      "\u201C%@\u201D can't be added because it has no bundle identifier.", TextTable::standard};
  static constexpr TextKey appNotKept{"\u201C%@\u201D can't be added because its name or location can't be stored.",
                                      TextTable::standard};
  static constexpr TextKey appListFull{"The list is full. Remove an app to add another.", TextTable::standard};
  static constexpr TextKey scheduleFrom{"From", TextTable::standard};
  static constexpr TextKey scheduleTo{"To", TextTable::standard};
  static constexpr TextKey automaticCombination{"Stay awake when", TextTable::standard};
  static constexpr TextKey combinationAny{"Any rule that's on holds", TextTable::standard};
  static constexpr TextKey combinationAll{"All rules that are on hold", TextTable::standard};
  static constexpr TextKey stopWhenScreenLocks{"Stop when the screen locks", TextTable::standard};
  static constexpr TextKey stopWhenScreenLocksHint{
      "Every session ends when the screen locks or you switch users, except while Deepwake is on.",
      TextTable::deepwake};
  static constexpr TextKey commandLineToolsNote{
      "Command-line tools aren't apps. To keep your Mac awake while one runs, use \u201Cwakeloft run\u201D or "
      "\u201Cwakeloft wait\u201D in Terminal.",
      TextTable::standard};

  // --- Automatic sessions: why one is on, its grace period, its pause ---
  static constexpr TextKey statusOnWhileDisplayConnected{"On \u00B7 while a display is connected", TextTable::standard};
  static constexpr TextKey statusOnWhileOnPowerAdapter{"On \u00B7 while on a power adapter", TextTable::standard};
  static constexpr TextKey statusOnWhileAppOpen{"On \u00B7 while %@ is open", TextTable::standard};
  static constexpr TextKey statusOnUntilScheduleEnds{"On \u00B7 until %@", TextTable::standard};
  static constexpr TextKey spokenOnWhileDisplayConnected{"Wakeloft, on, while a display is connected",
                                                         TextTable::standard};
  static constexpr TextKey spokenOnWhileOnPowerAdapter{"Wakeloft, on, while on a power adapter", TextTable::standard};
  static constexpr TextKey spokenOnWhileAppOpen{"Wakeloft, on, while %@ is open", TextTable::standard};
  static constexpr TextKey spokenOnUntilScheduleEnds{"Wakeloft, on, until %@", TextTable::standard};
  // Counted: %d is how many other rules hold besides the one named; the
  // schedule is named last, so it never leads.
  static constexpr TextKey statusOnWhileDisplayConnectedAndMore{"On \u00B7 while a display is connected and %d more",
                                                                TextTable::standard};
  static constexpr TextKey statusOnWhileOnPowerAdapterAndMore{"On \u00B7 while on a power adapter and %d more",
                                                              TextTable::standard};
  static constexpr TextKey spokenOnWhileDisplayConnectedAndMore{
      "Wakeloft, on, while a display is connected and %d more", TextTable::standard};
  static constexpr TextKey spokenOnWhileOnPowerAdapterAndMore{"Wakeloft, on, while on a power adapter and %d more",
                                                              TextTable::standard};
  // Only the schedule, named last, can hold beside an app: one more at most.
  static constexpr TextKey statusOnWhileAppOpenAndOneMore{"On \u00B7 while %@ is open and 1 more",
                                                          TextTable::standard};
  static constexpr TextKey spokenOnWhileAppOpenAndOneMore{"Wakeloft, on, while %@ is open and 1 more",
                                                          TextTable::standard};
  static constexpr TextKey statusOnEndingIn{"On \u00B7 ending in %@", TextTable::standard};
  static constexpr TextKey spokenOnEndingSoon{"Wakeloft, on, ending in less than a minute", TextTable::standard};
  static constexpr TextKey pausedUntilDisplayDisconnected{"Automatic sessions paused until the display is disconnected",
                                                          TextTable::standard};
  static constexpr TextKey pausedUntilPowerAdapterDisconnected{
      "Automatic sessions paused until the power adapter is disconnected", TextTable::standard};
  static constexpr TextKey pausedUntilAppQuits{"Automatic sessions paused until %@ quits", TextTable::standard};
  static constexpr TextKey pausedUntilScheduleEnds{"Automatic sessions paused until %@", TextTable::standard};
  static constexpr TextKey pausedUntilNoRuleHolds{"Automatic sessions paused until no rule holds",
                                                  TextTable::standard};
  static constexpr TextKey resume{"Resume", TextTable::standard};
  static constexpr TextKey resumeAutomaticSessions{"Resume automatic sessions", TextTable::standard};
  static constexpr TextKey lidClosedSleepsOnBattery{
      "On battery, closing the lid still puts your Mac to sleep. Only Deepwake keeps it awake with the lid closed.",
      TextTable::deepwake};
};

}  // namespace wakeloft
