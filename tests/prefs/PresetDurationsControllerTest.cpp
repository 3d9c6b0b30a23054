#include "prefs/PresetDurationsController.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "base/InMemoryDefaultsDomain.h"
#include "prefs/UserDefaultsPresetDurationStore.h"

namespace wakeloft {
namespace {

const std::string key = "com.wakeloft.presetDurations";
const AwakeDuration halfHour{1800}, hour{3600}, twoHours{7200}, fourHours{14400}, eightHours{28800};
const std::vector<AwakeDuration> defaultThree{halfHour, hour, twoHours};

class PresetDurationsControllerTest : public ::testing::Test {
 protected:
  std::vector<AwakeDuration> pinnedWithStored(DefaultsValue stored) {
    defaults.set(key, std::move(stored));
    return PresetDurationsController(store).pinned();
  }

  InMemoryDefaultsDomain defaults;
  std::shared_ptr<UserDefaultsPresetDurationStore> store = std::make_shared<UserDefaultsPresetDurationStore>(defaults);
};

TEST_F(PresetDurationsControllerTest, TheDefaultIsNotWrittenBackAndAStoredChoiceIsReadSortedOrIfUnusableAsTheDefaultLeftAsItWas) {
  PresetDurationsController controller(store);
  EXPECT_EQ(controller.pinned(), defaultThree);
  EXPECT_TRUE(defaults.values().empty());

  int changes = 0;
  const auto subscription = controller.observe([&] { ++changes; });
  controller.pin({twoHours, hour, halfHour});
  EXPECT_EQ(defaults.object(key), DefaultsValue(DefaultsValue::Array{1800.0, 3600.0, 7200.0}));
  EXPECT_EQ(changes, 0);

  // An absent choice removes the key.
  store->setPinnedSeconds(std::nullopt);
  EXPECT_TRUE(defaults.values().empty());
  EXPECT_EQ(store->pinnedSeconds(), std::nullopt);

  EXPECT_EQ(pinnedWithStored(DefaultsValue::Array{7200.0, 1800.0}), (std::vector<AwakeDuration>{halfHour, twoHours}));
  // Integers are numbers as well.
  EXPECT_EQ(pinnedWithStored(DefaultsValue::Array{28800, 3600}), (std::vector<AwakeDuration>{hour, eightHours}));
  EXPECT_EQ(pinnedWithStored(DefaultsValue::Array{}), std::vector<AwakeDuration>{});

  const std::vector<DefaultsValue> unusable = {
      DefaultsValue::Array{1800.0, "3600"},
      DefaultsValue::Array{1800.0, true},
      DefaultsValue::Array{DefaultsValue(DefaultsValue::Array{1800.0})},
      DefaultsValue(1800.0),
      DefaultsValue("1800,3600"),
      DefaultsValue(DefaultsValue::Dictionary{{"1800", 1800.0}}),
  };
  for (const auto& value : unusable) {
    EXPECT_EQ(pinnedWithStored(value), defaultThree);
    EXPECT_EQ(defaults.object(key), value);
  }
}

TEST_F(PresetDurationsControllerTest, PinStoresTheSortedSecondsAndTellsObserversButAnInvalidPinChangesNothing) {
  PresetDurationsController controller(store);
  int changes = 0;
  const auto subscription = controller.observe([&] { ++changes; });

  controller.pin({fourHours, halfHour});
  EXPECT_EQ(controller.pinned(), (std::vector<AwakeDuration>{halfHour, fourHours}));
  EXPECT_EQ(defaults.object(key), DefaultsValue(DefaultsValue::Array{1800.0, 14400.0}));
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(PresetDurationsController(store).pinned(), controller.pinned());

  controller.pin({});
  EXPECT_EQ(controller.pinned(), std::vector<AwakeDuration>{});
  EXPECT_EQ(defaults.object(key), DefaultsValue(DefaultsValue::Array{}));
  EXPECT_EQ(changes, 2);

  controller.pin({hour});
  controller.pin({{5400}});
  EXPECT_EQ(controller.pinned(), std::vector<AwakeDuration>{hour});
  EXPECT_EQ(defaults.object(key), DefaultsValue(DefaultsValue::Array{3600.0}));
  EXPECT_EQ(changes, 3);
}

}  // namespace
}  // namespace wakeloft
