#include "doctor/DoctorReport.h"

#include <algorithm>
#include <cmath>

#include "base/JsonWriter.h"
#include "prefs/StableLocation.h"
#include "prefs/Translocation.h"

namespace wakeloft {

namespace {

constexpr const char* moveToApplications = "Move Wakeloft into the Applications folder and open it from there.";

std::string seconds(double value) { return std::to_string(static_cast<long long>(std::ceil(value))) + " s"; }

const char* registrationText(LidHelperStatus status) {
  switch (status) {
    case LidHelperStatus::enabled: return "enabled";
    case LidHelperStatus::requiresApproval: return "requires approval";
    case LidHelperStatus::notRegistered: return "not registered";
    case LidHelperStatus::notFound: return "not found";
  }
  return "not registered";
}

const char* thermalText(ThermalState state) {
  switch (state) {
    case ThermalState::nominal: return "nominal";
    case ThermalState::fair: return "fair";
    case ThermalState::serious: return "serious";
    case ThermalState::critical: return "critical";
  }
  return "nominal";
}

std::string guardrailText(const DeepwakeGuardrails::Stop& stop) {
  switch (stop.rule) {
    case DeepwakeGuardrails::Stop::Rule::batteryFloor:
      return "the battery floor of " + std::to_string(stop.batteryFloor) + " % would stop Deepwake now";
    case DeepwakeGuardrails::Stop::Rule::lowPowerMode: return "Low Power Mode would stop Deepwake now";
    case DeepwakeGuardrails::Stop::Rule::criticalHeat: return "critical heat would stop Deepwake now";
    case DeepwakeGuardrails::Stop::Rule::lidOpened: break;
  }
  return "the lid opening would stop Deepwake now";
}

std::string holderText(const AssertionHolder& holder) {
  return (holder.name.empty() ? std::string("a process") : holder.name) + " (pid " + std::to_string(holder.pid) +
         "): " + holder.type + ", \"" + holder.reason + "\"";
}

}  // namespace

DoctorReport::DoctorReport(const DoctorFacts& facts) : holders_(facts.assertionHolders) {
  addApp(facts);
  addHelper(facts);
  addMachine(facts, addSetting(facts));
  if (facts.unreadableValues.empty()) {
    add("storedValues", "Stored values: all readable");
  } else {
    std::string keys;
    for (const auto& key : facts.unreadableValues) keys += (keys.empty() ? "" : ", ") + key;
    add("storedValues", "Stored values: cannot read " + keys,
        "Wakeloft uses its defaults instead; to clear one: defaults delete com.wakeloft.app KEY");
  }
}

void DoctorReport::addApp(const DoctorFacts& facts) {
  add("app", facts.isAppRunning ? "Wakeloft: running" : "Wakeloft: not running");
  if (!facts.appPath) {
    add("copy", "Copy: unknown");
    return;
  }
  add("copy", "Copy: " + *facts.appPath + ", version " + facts.appVersion.value_or("unknown"));
  if (StableLocation::isInside(*facts.appPath, facts.applicationsFolders)) {
    add("location", "Location: in an Applications folder");
  } else {
    add("location", "Location: outside the Applications folders", moveToApplications);
  }
  if (Translocation::isTranslocated(*facts.appPath)) {
    add("translocated", "Translocated: yes, macOS runs it from a read-only copy", moveToApplications);
  } else {
    add("translocated", "Translocated: no");
  }
}

void DoctorReport::addHelper(const DoctorFacts& facts) {
  if (!facts.helperRegistration) {
    add("helperRegistration", "Helper registration: unknown, Wakeloft has not run yet");
  } else {
    const auto status = *facts.helperRegistration;
    std::optional<std::string> advice;
    if (facts.hasUsedDeepwake && status == LidHelperStatus::requiresApproval) {
      advice = "Deepwake needs it: allow Wakeloft in System Settings > General > Login Items.";
    } else if (facts.hasUsedDeepwake && status == LidHelperStatus::notFound) {
      advice = "Deepwake needs it: this copy of Wakeloft lacks its helper; install Wakeloft again.";
    }
    add("helperRegistration", std::string("Helper registration: ") + registrationText(status), advice);
  }

  if (!facts.helperVersion) {
    add("helperVersion", "Helper version: unknown");
  } else if (!facts.appVersion || *facts.appVersion == *facts.helperVersion) {
    add("helperVersion", "Helper version: " + *facts.helperVersion);
  } else {
    add("helperVersion", "Helper version: " + *facts.helperVersion + ", not the app's " + *facts.appVersion,
        "Quit Wakeloft and open it again, so the helper of this copy takes over.");
  }

  if (facts.helperAnswer) {
    add("helperAnswers", "Helper: answers at " + facts.helperAddress);
  } else {
    add("helperAnswers", "Helper: does not answer at " + facts.helperAddress + ": " + facts.helperSilence);
  }
}

std::optional<bool> DoctorReport::addSetting(const DoctorFacts& facts) {
  const auto& answer = facts.helperAnswer;
  // Read here first; the helper's word stands in when that failed.
  std::optional<bool> on = facts.isSettingOn;
  if (!on && answer && answer->setting != LidLeaseStatus::Setting::unreadable) {
    on = answer->setting == LidLeaseStatus::Setting::on;
  }
  const bool leaseHeld = answer && answer->leaseRemaining;

  std::string fact = "Sleep setting (" + facts.settingName + "): ";
  if (!on) {
    fact += "unreadable: " + facts.settingUnreadable;
  } else {
    fact += *on ? "1" : "0";
  }
  if (facts.recordedLeaseEnd) {
    const double left = facts.recordedLeaseEnd->secondsSince(facts.now);
    fact += left > 0 ? ", the file records a lease ending in " + seconds(left) : ", the file records a lease that has ended";
  }
  std::optional<std::string> advice;
  if (on == true && !leaseHeld) {
    fact += ", with no Wakeloft lease";
    advice = "something else keeps your Mac awake with the lid closed; to put it back: " + facts.putBackCommand;
  }
  add("sleepSetting", fact, advice);

  if (leaseHeld) {
    add("lease", "Wakeloft lease: held, " + seconds(*answer->leaseRemaining) + " left");
  } else {
    add("lease", answer ? "Wakeloft lease: none" : "Wakeloft lease: unknown, the helper did not answer");
  }
  return on;
}

void DoctorReport::addMachine(const DoctorFacts& facts, std::optional<bool> isSettingOn) {
  if (!holders_) {
    add("assertionHolders", "Keeping the Mac awake: not read");
  } else if (holders_->empty()) {
    add("assertionHolders", "Keeping the Mac awake: no process holds an assertion");
  } else {
    std::string fact = "Keeping the Mac awake:";
    for (const auto& holder : *holders_) fact += "\n  " + holderText(holder);
    add("assertionHolders", fact);
  }

  if (!facts.machine) {
    add("machine", "Machine: not read here");
    return;
  }
  const auto& machine = *facts.machine;
  std::string lid = !machine.isLidClosed ? "Lid: unknown" : *machine.isLidClosed ? "Lid: closed" : "Lid: open";
  // The setting at 1 keeps a closed lid from causing sleep, whatever else.
  if (facts.closingLidSleeps) {
    lid += *facts.closingLidSleeps && isSettingOn != true ? ", closing it sleeps the Mac"
                                                          : ", closing it does not sleep the Mac";
  }
  add("lid", lid);
  std::string power = machine.isOnBattery ? "Power: battery" : "Power: power adapter";
  if (machine.batteryCharge) power += ", charged " + std::to_string(*machine.batteryCharge) + " %";
  add("power", power);
  add("lowPowerMode", machine.isLowPowerModeOn ? "Low Power Mode: on" : "Low Power Mode: off");
  add("thermalState", std::string("Thermal state: ") + thermalText(machine.thermalState));
  add("externalDisplays", machine.hasExternalDisplay ? "External displays: connected" : "External displays: none");

  if (const auto stop = DeepwakeGuardrails::holding(facts.guardrails, machine)) {
    add("guardrail", "Guardrail: " + guardrailText(*stop));
  } else if (DeepwakeGuardrails::pausesForPower(facts.guardrails, machine)) {
    add("guardrail", "Guardrail: Deepwake would pause until a power adapter is connected");
  } else {
    add("guardrail", "Guardrail: none would stop Deepwake now");
  }
}

void DoctorReport::add(std::string key, std::string fact, std::optional<std::string> advice) {
  lines_.push_back({std::move(key), std::move(fact), std::move(advice)});
}

bool DoctorReport::isWrong() const {
  return std::any_of(lines_.begin(), lines_.end(), [](const Line& line) { return line.advice.has_value(); });
}

std::string DoctorReport::text() const {
  std::string out;
  for (const auto& line : lines_) {
    out += line.fact + "\n";
    if (line.advice) out += "  Wrong: " + *line.advice + "\n";
  }
  out += isWrong() ? "Something is wrong: see the lines marked Wrong.\n" : "Nothing is wrong.\n";
  return out;
}

std::string DoctorReport::json() const {
  JsonWriter json;
  json.beginObject().key("wrong").boolean(isWrong()).key("facts").beginArray();
  for (const auto& line : lines_) {
    json.beginObject().key("key").string(line.key).key("fact").string(line.fact).key("wrong").boolean(line.advice.has_value());
    if (line.advice) json.key("advice").string(*line.advice);
    json.endObject();
  }
  json.endArray().key("assertionHolders");
  if (!holders_) {
    json.null();
  } else {
    json.beginArray();
    for (const auto& holder : *holders_) {
      json.beginObject().key("pid").integer(holder.pid).key("name").string(holder.name).key("type").string(holder.type);
      json.key("reason").string(holder.reason).endObject();
    }
    json.endArray();
  }
  return json.endObject().text() + "\n";
}

}  // namespace wakeloft
