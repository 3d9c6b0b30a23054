#include "doctor/StoredValueCheck.h"

#include <gtest/gtest.h>

#include "base/InMemoryDefaultsDomain.h"
#include "lid/PublishedLidHelper.h"

namespace wakeloft {
namespace {

using Keys = std::vector<std::string>;

TEST(StoredValueCheckTest, ValuesTheStoresCannotReadAreNamedAndLeftInPlace) {
  const std::pair<const char*, DefaultsValue> bad[] = {
      {"com.wakeloft.boundProcesses", "garbage"},
      {"com.wakeloft.presetDurations", DefaultsValue::Array{1800.0, true}},
      {"com.wakeloft.deepwakeBatteryFloor", 25},
      {"com.wakeloft.deepwakeOnlyOnPowerAdapter", "1"},
      {PublishedLidHelper::statusKey, "enabledish"},
      {PublishedLidHelper::versionKey, std::string(65, '1')},
  };
  for (const auto& [key, value] : bad) {
    InMemoryDefaultsDomain defaults;
    defaults.set("com.wakeloft.deepwakeStopsWhenLidOpens", true);  // readable beside it
    defaults.set(key, value);
    const auto before = defaults.values();
    EXPECT_EQ(StoredValueCheck::unreadableKeys(defaults), Keys{key});
    EXPECT_EQ(defaults.values(), before) << key;
  }
  InMemoryDefaultsDomain deadline;
  deadline.set("com.wakeloft.isAwakeRequested", true);
  deadline.set("com.wakeloft.awakeUntil", "tomorrow");
  EXPECT_EQ(StoredValueCheck::unreadableKeys(deadline), Keys{"com.wakeloft.awakeUntil"});
}

TEST(StoredValueCheckTest, WhatTheAppPublishesOfItsHelperReadsBack) {
  InMemoryDefaultsDomain defaults;
  EXPECT_EQ(PublishedLidHelper::read(defaults).status, std::nullopt);
  PublishedLidHelper::publish(defaults, LidHelperStatus::requiresApproval, "1.4 (27)");
  EXPECT_EQ(PublishedLidHelper::read(defaults).version, "1.4 (27)");
  PublishedLidHelper::publish(defaults, LidHelperStatus::enabled, std::nullopt);
  EXPECT_EQ(PublishedLidHelper::read(defaults).status, LidHelperStatus::enabled);
  EXPECT_EQ(PublishedLidHelper::read(defaults).version, std::nullopt);
  EXPECT_TRUE(StoredValueCheck::unreadableKeys(defaults).empty());
}

}  // namespace
}  // namespace wakeloft
