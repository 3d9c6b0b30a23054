// The sample configuration profile against the keys the app reads.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "automatic/UserDefaultsAutomaticSessionStore.h"
#include "base/InMemoryDefaultsDomain.h"
#include "lid/DeepwakeAutomationConsent.h"
#include "lid/UserDefaultsDeepwakeGuardrailStore.h"
#include "support/SystemPropertyListParser.h"

namespace wakeloft {
namespace {

using Store = UserDefaultsDeepwakeGuardrailStore;
using AutomaticStore = UserDefaultsAutomaticSessionStore;

TEST(ManagedProfileTest, TheSampleSetsOnlyKnownKeysWithValuesTheAppReadsAsSet) {
  std::ifstream file(WAKELOFT_SOURCE_DIR "/packaging/managed/Wakeloft.mobileconfig", std::ios::binary);
  const std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(file), {}};
  const auto profile = testing::SystemPropertyListParser().parse(bytes);
  const auto* content = findEntry(profile, "PayloadContent");
  ASSERT_TRUE(content && content->get<PropertyList::Array>() && !content->get<PropertyList::Array>()->empty());
  const auto& payload = content->get<PropertyList::Array>()->front();
  EXPECT_EQ(*findEntry(payload, "PayloadType"), PropertyList("com.wakeloft.app"));

  const std::set<std::string> known = {
      Store::deepwakeAllowedKey, Store::batteryFloorKey, Store::stopsInLowPowerModeKey, Store::stopsWhenLidOpensKey,
      Store::onlyOnPowerAdapterKey, DeepwakeAutomationConsent::key,
      // Sparkle's own, which it reads from the app's defaults.
      "SUEnableAutomaticChecks", AutomaticStore::whileExternalDisplayKey, AutomaticStore::whileOnPowerAdapterKey,
      AutomaticStore::whileAppsRunKey, AutomaticStore::appsKey, AutomaticStore::onScheduleKey,
      AutomaticStore::scheduleWeekdaysKey, AutomaticStore::scheduleStartKey, AutomaticStore::scheduleEndKey,
      AutomaticStore::combinationKey, AutomaticStore::stopWhenScreenLocksKey};
  InMemoryDefaultsDomain defaults;
  for (const auto& [key, value] : *payload.get<PropertyList::Dictionary>()) {
    if (key.starts_with("Payload")) continue;
    EXPECT_TRUE(known.contains(key)) << "not a key the app reads: " << key;
    defaults.force(key, value);
  }
  EXPECT_EQ(Store(defaults).settings(), (DeepwakeGuardrails::Settings{30, true, true, true}));
  EXPECT_EQ(Store(defaults).forced(), (DeepwakeGuardrails::Forced{true, true, true, true}));
  EXPECT_TRUE(Store(defaults).isDeepwakeAllowed());
  const DeepwakeAutomationConsent consent(defaults);
  EXPECT_TRUE(consent.isForced());
  EXPECT_EQ(consent.answer(), DeepwakeAutomationConsent::Answer::refused);
  AutomaticStore automatic(defaults);
  EXPECT_TRUE(automatic.areRulesForced());
  EXPECT_TRUE(automatic.settings().whileOnPowerAdapter);
  EXPECT_TRUE(automatic.isStopWhenScreenLocksForced() && automatic.stopsWhenScreenLocks());
}

}  // namespace
}  // namespace wakeloft
