#include <gtest/gtest.h>

#include "base/InMemoryDefaultsDomain.h"
#include "lid/UserDefaultsLidAwakeStore.h"

namespace wakeloft {
namespace {

const std::string key = "com.wakeloft.acknowledgedHeatWarning";

TEST(UserDefaultsLidAwakeStoreTest, AcknowledgementIsABooleanUnderItsKey) {
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
}

TEST(UserDefaultsLidAwakeStoreTest, OtherKindsReadAsThePlatformReadsThemAndStayAsTheyAre) {
  InMemoryDefaultsDomain defaults;
  UserDefaultsLidAwakeStore store(defaults);

  defaults.set(key, "YES");
  EXPECT_TRUE(store.hasAcknowledgedHeatWarning());
  defaults.set(key, 1);
  EXPECT_TRUE(store.hasAcknowledgedHeatWarning());
  defaults.set(key, DefaultsValue::Data{0x01});
  EXPECT_FALSE(store.hasAcknowledgedHeatWarning());
  EXPECT_EQ(defaults.object(key), DefaultsValue(DefaultsValue::Data{0x01}));
}

}  // namespace
}  // namespace wakeloft
