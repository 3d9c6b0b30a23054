#include "doctor/DoctorReport.h"

#include <gtest/gtest.h>

#include <functional>

namespace wakeloft {
namespace {

using Setting = LidLeaseStatus::Setting;

// A Mac on which nothing is wrong: the app in /Applications, its helper
// enabled and of its version, holding the setting at 1 for a lease.
DoctorFacts healthy() {
  DoctorFacts facts;
  facts.isAppRunning = true;
  facts.appPath = "/Applications/Wakeloft.app";
  facts.appVersion = "1.4 (27)";
  facts.applicationsFolders = {"/Applications", "/Users/ana/Applications"};
  facts.helperRegistration = LidHelperStatus::enabled;
  facts.helperVersion = "1.4 (27)";
  facts.hasUsedDeepwake = true;
  facts.helperAddress = "com.wakeloft.app.lidhelper";
  facts.helperAnswer = LidLeaseStatus{Setting::on, "", 21.5};
  facts.settingName = "disablesleep";
  facts.isSettingOn = true;
  facts.putBackCommand = "sudo pmset -a disablesleep 0";
  facts.assertionHolders = std::vector<AssertionHolder>{};
  facts.machine = MachineConditionsSnapshot{};
  return facts;
}

// The setting read as 0 here and by the helper, which holds no lease.
void settingOff(DoctorFacts& facts) {
  facts.isSettingOn = false;
  facts.helperAnswer = LidLeaseStatus{Setting::off, "", std::nullopt};
}

struct Case {
  const char* what;
  std::function<void(DoctorFacts&)> change;
  // The one line then wrong; empty when nothing is.
  const char* wrongKey;
};

std::vector<std::string> wrongKeys(const DoctorReport& report) {
  std::vector<std::string> keys;
  for (const auto& line : report.lines()) {
    if (line.advice) keys.push_back(line.key);
  }
  return keys;
}

// The report's line for `key`; a failure, not a crash, when there is none.
DoctorReport::Line lineOf(const DoctorFacts& facts, const std::string& key) {
  const DoctorReport report(facts);
  for (const auto& line : report.lines()) {
    if (line.key == key) return line;
  }
  ADD_FAILURE() << "no line " << key;
  return {};
}

TEST(DoctorReportTest, EachWrongFactIsMarkedAndEverythingElseIsInformation) {
  const Case cases[] = {
      {"nothing changed", [](DoctorFacts&) {}, ""},
      {"setting 1, no lease", [](DoctorFacts& f) { f.helperAnswer->leaseRemaining.reset(); }, "sleepSetting"},
      {"unread here, helper says 1 without a lease",
       [](DoctorFacts& f) {
         f.isSettingOn.reset();
         f.helperAnswer->leaseRemaining.reset();
       },
       "sleepSetting"},
      {"setting 0, no lease", settingOff, ""},
      {"helper of another version", [](DoctorFacts& f) { f.helperVersion = "1.3 (25)"; }, "helperVersion"},
      {"helper version unknown", [](DoctorFacts& f) { f.helperVersion.reset(); }, ""},
      {"approval needed after use", [](DoctorFacts& f) { f.helperRegistration = LidHelperStatus::requiresApproval; },
       "helperRegistration"},
      {"helper not found after use", [](DoctorFacts& f) { f.helperRegistration = LidHelperStatus::notFound; },
       "helperRegistration"},
      {"approval needed, Deepwake never used",
       [](DoctorFacts& f) {
         f.helperRegistration = LidHelperStatus::requiresApproval;
         f.hasUsedDeepwake = false;
       },
       ""},
      {"registration unknown", [](DoctorFacts& f) { f.helperRegistration.reset(); }, ""},
      {"not registered after use", [](DoctorFacts& f) { f.helperRegistration = LidHelperStatus::notRegistered; }, ""},
      {"in Downloads", [](DoctorFacts& f) { f.appPath = "/Users/ana/Downloads/Wakeloft.app"; }, "location"},
      {"translocated",
       [](DoctorFacts& f) {
         f.applicationsFolders.push_back("/private/var/folders");
         f.appPath = "/private/var/folders/x/AppTranslocation/AB12/d/Wakeloft.app";
       },
       "translocated"},
      {"unreadable value", [](DoctorFacts& f) { f.unreadableValues = {"com.wakeloft.awakeUntil"}; }, "storedValues"},
      {"other processes hold assertions",
       [](DoctorFacts& f) { f.assertionHolders->push_back({88, "caffeinate", "PreventUserIdleSystemSleep", "x"}); }, ""},
      {"a guardrail would stop Deepwake", [](DoctorFacts& f) { f.machine->isLowPowerModeOn = true; }, ""},
  };
  for (const auto& c : cases) {
    DoctorFacts facts = healthy();
    c.change(facts);
    const DoctorReport report(facts);
    const auto keys = wrongKeys(report);
    EXPECT_EQ(keys, *c.wrongKey ? std::vector<std::string>{c.wrongKey} : std::vector<std::string>{}) << c.what;
    EXPECT_EQ(report.exitStatus(), keys.empty() ? 0 : 1) << c.what;
  }
}

TEST(DoctorReportTest, ASettingLeftOnSaysSomethingElseKeepsTheMacAwakeAndHowToPutItBack) {
  DoctorFacts facts = healthy();
  facts.helperAnswer.reset();
  EXPECT_EQ(lineOf(facts, "sleepSetting").advice,
            "something else keeps your Mac awake with the lid closed; to put it back: sudo pmset -a disablesleep 0");
}

TEST(DoctorReportTest, ClosingTheLidSleepsTheMacOnlyWhileTheSettingIs0) {
  DoctorFacts facts = healthy();
  facts.closingLidSleeps = true;
  EXPECT_TRUE(lineOf(facts, "lid").fact.ends_with("does not sleep the Mac"));
  settingOff(facts);
  EXPECT_TRUE(lineOf(facts, "lid").fact.ends_with("closing it sleeps the Mac"));
}

TEST(DoctorReportTest, TheJsonFormIsOneObjectOfTheVerdictTheLinesAndTheHolders) {
  DoctorFacts facts = healthy();
  facts.unreadableValues = {"com.wakeloft.awakeUntil"};
  facts.assertionHolders->push_back({42, "say \"hi\"\xFF", "NoIdleSleepAssertion", "line\nbreak\x01"});
  const DoctorReport report(facts);
  const std::string json = report.json();
  EXPECT_TRUE(json.starts_with("{\"wrong\":true,\"facts\":[{\"key\":\"app\",\"fact\":\"Wakeloft: running\",\"wrong\":false},"))
      << json;
  EXPECT_NE(json.find(",\"wrong\":true,\"advice\":\"Wakeloft uses its defaults"), std::string::npos) << json;
  EXPECT_TRUE(json.ends_with("],\"assertionHolders\":[{\"pid\":42,\"name\":\"say \\\"hi\\\"\xEF\xBF\xBD\",\"type\":"
                             "\"NoIdleSleepAssertion\",\"reason\":\"line\\nbreak\\u0001\"}]}\n"))
      << json;
  facts.assertionHolders.reset();
  EXPECT_TRUE(DoctorReport(facts).json().ends_with(",\"assertionHolders\":null}\n"));
}

}  // namespace
}  // namespace wakeloft
