// The automatic rules and their suppression in the user defaults.

#include "automatic/UserDefaultsAutomaticSessionStore.h"

#include <gtest/gtest.h>

#include "base/InMemoryDefaultsDomain.h"
#include "session/UserDefaultsScreenOnStore.h"

namespace wakeloft {
namespace {

using Store = UserDefaultsAutomaticSessionStore;
using Dictionary = DefaultsValue::Dictionary;
using Array = DefaultsValue::Array;

DefaultsValue app(std::string identifier) {
  return Dictionary{{"bundleIdentifier", std::move(identifier)}, {"name", "Xcode"}, {"path", "/Applications/X.app"}};
}

TEST(UserDefaultsAutomaticSessionStoreTest, SettingsAndSuppressionRoundTripAndDefaultWhenAbsent) {
  InMemoryDefaultsDomain defaults;
  EXPECT_EQ(Store(defaults).settings(), AutomaticRules::Settings{});
  EXPECT_FALSE(Store(defaults).isSuppressed());
  const AutomaticRules::Settings chosen{false, true, true, {{"com.apple.dt.Xcode", "Xcode", "/Applications/Xcode.app"},
                                        {"com.figma.Desktop", "Figma", ""}}, true, {0x7F, 1320, 360},
                                        AutomaticRules::Combination::all};
  Store(defaults).setSettings(chosen);
  Store(defaults).setSuppressed(true);
  EXPECT_EQ(Store(defaults).settings(), chosen);
  EXPECT_TRUE(Store(defaults).isSuppressed());
}

TEST(UserDefaultsAutomaticSessionStoreTest, AnUnreadableValueReadsAsTheDefaultAndIsRemovedAlone) {
  const std::pair<const char*, DefaultsValue> cases[] = {
      {Store::whileExternalDisplayKey, 1},     {Store::suppressedKey, "YES"},
      {Store::scheduleWeekdaysKey, 128},       {Store::scheduleStartKey, 1440},
      {Store::scheduleEndKey, 60.5},           {Store::scheduleEndKey, true},
      {Store::combinationKey, "both"},         {Store::appsKey, app("com.apple.dt.Xcode")},
      {Store::appsKey, Array{app("com.apple.dt.Xcode"), app("com.apple.dt.Xcode")}},
      {Store::appsKey, Array{app("com.apple.dt.Xcode\n")}},
      {Store::appsKey, Array{Dictionary{{"bundleIdentifier", "com.apple.dt.Xcode"}}}},
  };
  AutomaticRules::Settings expected;
  expected.onSchedule = true;
  for (const auto& [key, value] : cases) {
    InMemoryDefaultsDomain defaults;
    defaults.set(key, value);
    defaults.set(Store::onScheduleKey, true);
    Store store(defaults);
    EXPECT_EQ(store.settings(), expected) << key;
    EXPECT_FALSE(store.isSuppressed()) << key;
    EXPECT_EQ(defaults.values().size(), 1u) << key;
  }
}

TEST(UserDefaultsAutomaticSessionStoreTest, AProfileFixesTheRulesAsAWholeAndTheUsersOwnValuesStayUnderneath) {
  InMemoryDefaultsDomain defaults;
  defaults.set(Store::whileExternalDisplayKey, true);
  defaults.set(Store::combinationKey, "all");
  const auto own = defaults.values();
  defaults.force(Store::whileOnPowerAdapterKey, true);
  defaults.force(Store::combinationKey, "both");
  defaults.force(Store::stopWhenScreenLocksKey, true);
  Store store(defaults);
  EXPECT_TRUE(store.areRulesForced());
  EXPECT_TRUE(store.settings().whileOnPowerAdapter);
  store.setSettings({});
  store.setStopsWhenScreenLocks(false);
  EXPECT_EQ(defaults.values(), own);
  EXPECT_TRUE(store.stopsWhenScreenLocks());
}

TEST(UserDefaultsAutomaticSessionStoreTest, TheScreenSwitchesAreOffByDefaultAndAnythingButABooleanIsRemoved) {
  struct Switch {
    const char* key;
    std::function<bool(DefaultsDomain&)> read;
  };
  const Switch switches[] = {
      {Store::stopWhenScreenLocksKey, [](DefaultsDomain& d) { return Store(d).stopsWhenScreenLocks(); }},
      {UserDefaultsScreenOnStore::keepScreenOnKey,
       [](DefaultsDomain& d) { return UserDefaultsScreenOnStore(d).keepsScreenOn(); }},
  };
  const std::pair<std::optional<DefaultsValue>, bool> values[] = {
      {std::nullopt, false}, {true, true}, {false, false}, {1, false}};
  for (const auto& [key, read] : switches) {
    for (const auto& [value, on] : values) {
      InMemoryDefaultsDomain defaults;
      if (value) defaults.set(key, *value);
      EXPECT_EQ(read(defaults), on) << key;
      EXPECT_EQ(defaults.object(key).has_value(), value && value->get<bool>()) << key;
    }
  }
}

}  // namespace
}  // namespace wakeloft
