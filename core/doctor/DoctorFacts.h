#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/Date.h"
#include "doctor/AssertionHolder.h"
#include "lease/LidLeaseStatus.h"
#include "lid/DeepwakeGuardrails.h"
#include "lid/LidHelperStatus.h"
#include "lid/MachineConditionsSnapshot.h"

namespace wakeloft {

// Everything `wakeloft doctor` looked at, read once, before anything is
// judged. What a platform cannot read stays absent and is reported so.
struct DoctorFacts {
  Date now;

  // Wakeloft itself.
  bool isAppRunning = false;
  // The copy: the running one, else the one the command belongs to; its
  // bundle path with links resolved.
  std::optional<std::string> appPath;
  // "1.4 (27)".
  std::optional<std::string> appVersion;
  // The folders the stable-location rule accepts.
  std::vector<std::string> applicationsFolders;

  // The helper, as the app last published it: absent when it never did.
  std::optional<LidHelperStatus> helperRegistration;
  std::optional<std::string> helperVersion;
  // The heat warning was acknowledged, which Deepwake's first use needs.
  bool hasUsedDeepwake = false;
  // Where the helper was asked: its mach service, or the rig's socket.
  std::string helperAddress;
  // Its answer to the status request; absent when it gave none, and then
  // `helperSilence` says why.
  std::optional<LidLeaseStatus> helperAnswer;
  std::string helperSilence;

  // The sleep setting, read here the way the helper reads it.
  std::string settingName;
  // Absent when unreadable, and then `settingUnreadable` says why.
  std::optional<bool> isSettingOn;
  std::string settingUnreadable;
  // The lease end a rig file records.
  std::optional<Date> recordedLeaseEnd;
  // The command that puts the setting back to 0.
  std::string putBackCommand;

  // The processes holding an assertion that keeps the Mac awake; absent
  // where they could not be read (and on the rig, which has none).
  std::optional<std::vector<AssertionHolder>> assertionHolders;
  // Absent where there is no such machine to read (the rig).
  std::optional<MachineConditionsSnapshot> machine;
  // Whether closing the lid would make the Mac sleep with the setting at 0
  // (it does not in closed-display mode); absent when unknown.
  std::optional<bool> closingLidSleeps;
  DeepwakeGuardrails::Settings guardrails;

  // The app's stored values that could not be read, by key.
  std::vector<std::string> unreadableValues;
};

}  // namespace wakeloft
