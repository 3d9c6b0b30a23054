#include <gtest/gtest.h>

#include "base/InMemoryDefaultsDomain.h"
#include "lid/UserDefaultsDeepwakeGuardrailStore.h"
#include "lid/UserDefaultsLidAwakeStore.h"

namespace wakeloft {
namespace {

const std::string key = "com.wakeloft.acknowledgedHeatWarning";

TEST(UserDefaultsLidAwakeStoreTest, AcknowledgementIsABooleanUnderItsKeyAndOtherKindsReadAsThePlatformReadsThem) {
  InMemoryDefaultsDomain defaults;
  UserDefaultsLidAwakeStore store(defaults);
  EXPECT_FALSE(store.hasAcknowledgedHeatWarning());
  EXPECT_TRUE(defaults.values().empty());  // reading writes nothing

  store.setHasAcknowledgedHeatWarning(true);
  EXPECT_EQ(defaults.object(key), DefaultsValue(true));
  EXPECT_TRUE(UserDefaultsLidAwakeStore(defaults).hasAcknowledgedHeatWarning());

  store.setHasAcknowledgedHeatWarning(false);
  EXPECT_EQ(defaults.object(key), DefaultsValue(false));
  EXPECT_FALSE(store.hasAcknowledgedHeatWarning());

  // Other kinds are read as the platform reads them, and stay as they are.
  defaults.set(key, "YES");
  EXPECT_TRUE(store.hasAcknowledgedHeatWarning());
  defaults.set(key, 1);
  EXPECT_TRUE(store.hasAcknowledgedHeatWarning());
  defaults.set(key, DefaultsValue::Data{0x01});
  EXPECT_FALSE(store.hasAcknowledgedHeatWarning());
  EXPECT_EQ(defaults.object(key), DefaultsValue(DefaultsValue::Data{0x01}));
}

using Store = UserDefaultsDeepwakeGuardrailStore;

TEST(UserDefaultsDeepwakeGuardrailStoreTest, SettingsRoundTripUnderTheirKeysAndDefaultWhenAbsentOrUnreadableWhichAreRemoved) {
  InMemoryDefaultsDomain defaults;
  Store store(defaults);
  EXPECT_EQ(store.settings(), DeepwakeGuardrails::Settings{});
  EXPECT_EQ(store.settings().batteryFloor, 20);
  EXPECT_TRUE(defaults.values().empty());

  const DeepwakeGuardrails::Settings chosen{.batteryFloor = 0, .stopsInLowPowerMode = false, .stopsWhenLidOpens = true,
                                            .onlyOnPowerAdapter = true};
  store.setSettings(chosen);
  EXPECT_EQ(defaults.object(Store::batteryFloorKey), DefaultsValue(0));
  EXPECT_EQ(defaults.object(Store::onlyOnPowerAdapterKey), DefaultsValue(true));
  EXPECT_EQ(Store(defaults).settings(), chosen);

  const DefaultsValue unreadableFloors[] = {true, 25, 20.5, -10, 1e300, "20", DefaultsValue::Array{20}};
  for (const auto& floor : unreadableFloors) {
    InMemoryDefaultsDomain garbled;
    garbled.set(Store::batteryFloorKey, floor);
    garbled.set(Store::stopsWhenLidOpensKey, true);
    EXPECT_EQ(Store(garbled).settings().batteryFloor, 20);
    EXPECT_EQ(garbled.object(Store::batteryFloorKey), std::nullopt);
    EXPECT_EQ(garbled.object(Store::stopsWhenLidOpensKey), DefaultsValue(true));  // the readable one stays
  }
  defaults.set(Store::batteryFloorKey, 50.0);  // a real that is a whole floor reads
  defaults.set(Store::stopsInLowPowerModeKey, 0);
  defaults.set(Store::onlyOnPowerAdapterKey, "YES");
  const auto settings = Store(defaults).settings();
  EXPECT_EQ(settings.batteryFloor, 50);
  EXPECT_TRUE(settings.stopsInLowPowerMode);
  EXPECT_FALSE(settings.onlyOnPowerAdapter);
  EXPECT_EQ(defaults.object(Store::stopsInLowPowerModeKey), std::nullopt);
  EXPECT_EQ(defaults.object(Store::onlyOnPowerAdapterKey), std::nullopt);
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
  EXPECT_TRUE(defaults.values().contains(Store::onlyOnPowerAdapterKey));
  EXPECT_TRUE(defaults.isForced(Store::stopsWhenLidOpensKey));
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
