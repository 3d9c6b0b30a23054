#include <gtest/gtest.h>

#include "base/InMemoryDefaultsDomain.h"
#include "lid/UserDefaultsDeepwakeGuardrailStore.h"
#include "lid/UserDefaultsLidAwakeStore.h"

namespace wakeloft {
namespace {

const std::string key = "com.wakeloft.acknowledgedHeatWarning";

TEST(UserDefaultsLidAwakeStoreTest, TheAcknowledgementIsABooleanUnderItsKey) {
  InMemoryDefaultsDomain defaults;
  UserDefaultsLidAwakeStore store(defaults);
  EXPECT_FALSE(store.hasAcknowledgedHeatWarning());
  store.setHasAcknowledgedHeatWarning(true);
  EXPECT_EQ(defaults.object(key), DefaultsValue(true));
  defaults.set(key, DefaultsValue::Data{0x01});
  EXPECT_FALSE(store.hasAcknowledgedHeatWarning());
}

using Store = UserDefaultsDeepwakeGuardrailStore;

TEST(UserDefaultsDeepwakeGuardrailStoreTest, SettingsRoundTripUnderTheirKeys) {
  InMemoryDefaultsDomain defaults;
  EXPECT_EQ(Store(defaults).settings(), DeepwakeGuardrails::Settings{});
  const DeepwakeGuardrails::Settings chosen{
      .batteryFloor = 0, .stopsInLowPowerMode = false, .stopsWhenLidOpens = true, .onlyOnPowerAdapter = true};
  Store(defaults).setSettings(chosen);
  EXPECT_EQ(defaults.object(Store::batteryFloorKey), DefaultsValue(0));
  EXPECT_EQ(Store(defaults).settings(), chosen);
}

TEST(UserDefaultsDeepwakeGuardrailStoreTest, AnUnreadableValueReadsAsTheDefaultAndIsRemovedAlone) {
  const DefaultsValue unreadableFloors[] = {true, 25, 20.5, -10, 1e300, "20", DefaultsValue::Array{20}};
  for (const auto& floor : unreadableFloors) {
    InMemoryDefaultsDomain garbled;
    garbled.set(Store::batteryFloorKey, floor);
    garbled.set(Store::stopsWhenLidOpensKey, true);
    EXPECT_EQ(Store(garbled).settings().batteryFloor, 20);
    EXPECT_EQ(garbled.object(Store::batteryFloorKey), std::nullopt);
    EXPECT_EQ(garbled.object(Store::stopsWhenLidOpensKey), DefaultsValue(true));
  }
  InMemoryDefaultsDomain defaults;
  defaults.set(Store::batteryFloorKey, 50.0);  // a real that is a whole floor reads
  defaults.set(Store::onlyOnPowerAdapterKey, "YES");
  EXPECT_EQ(Store(defaults).settings().batteryFloor, 50);
  EXPECT_FALSE(Store(defaults).settings().onlyOnPowerAdapter);
}

TEST(UserDefaultsDeepwakeGuardrailStoreTest, AProfilesValueIsReadButNeverRemovedOrOverwritten) {
  InMemoryDefaultsDomain defaults;
  defaults.force(Store::batteryFloorKey, std::int64_t{30});
  defaults.force(Store::stopsWhenLidOpensKey, "on");
  Store store(defaults);
  EXPECT_EQ(store.settings().batteryFloor, 30);
  EXPECT_EQ(store.settings().stopsWhenLidOpens, DeepwakeGuardrails::Settings{}.stopsWhenLidOpens);
  EXPECT_EQ(store.forced(), (DeepwakeGuardrails::Forced{.batteryFloor = true, .stopsWhenLidOpens = true}));
  store.setSettings({.batteryFloor = 10, .stopsWhenLidOpens = false, .onlyOnPowerAdapter = true});
  EXPECT_FALSE(defaults.values().contains(Store::batteryFloorKey));
  EXPECT_FALSE(defaults.values().contains(Store::stopsWhenLidOpensKey));
}

TEST(UserDefaultsDeepwakeGuardrailStoreTest, OnlyAProfileCanForbidDeepwakeAndOneThatSaysNothingClearDoes) {
  InMemoryDefaultsDomain defaults;
  defaults.set(Store::deepwakeAllowedKey, false);
  EXPECT_TRUE(Store(defaults).isDeepwakeAllowed());
  defaults.force(Store::deepwakeAllowedKey, true);
  EXPECT_TRUE(Store(defaults).isDeepwakeAllowed());
  defaults.force(Store::deepwakeAllowedKey, std::int64_t{1});
  EXPECT_FALSE(Store(defaults).isDeepwakeAllowed());
}

}  // namespace
}  // namespace wakeloft
