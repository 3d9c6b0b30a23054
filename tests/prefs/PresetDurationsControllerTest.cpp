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
const AwakeDuration halfHour{1800}, hour{3600}, twoHours{7200}, fourHours{14400};
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

TEST_F(PresetDurationsControllerTest, TheDefaultIsNotWrittenBack) {
  EXPECT_EQ(PresetDurationsController(store).pinned(), defaultThree);
  EXPECT_TRUE(defaults.values().empty());
}

TEST_F(PresetDurationsControllerTest, AStoredChoiceOfNumbersIsReadSorted) {
  EXPECT_EQ(pinnedWithStored(DefaultsValue::Array{7200.0, 1800}), (std::vector<AwakeDuration>{halfHour, twoHours}));
  EXPECT_EQ(pinnedWithStored(DefaultsValue::Array{}), std::vector<AwakeDuration>{});
}

TEST_F(PresetDurationsControllerTest, AnUnusableStoredChoiceReadsAsTheDefaultAndIsLeftAsItWas) {
  const std::vector<DefaultsValue> unusable = {
      DefaultsValue::Array{1800.0, "3600"},
      DefaultsValue::Array{1800.0, true},
      DefaultsValue::Array{DefaultsValue(DefaultsValue::Array{1800.0})},
      DefaultsValue("1800,3600"),
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
  EXPECT_EQ(defaults.object(key), DefaultsValue(DefaultsValue::Array{1800.0, 14400.0}));
  EXPECT_EQ(PresetDurationsController(store).pinned(), controller.pinned());
  EXPECT_EQ(changes, 1);

  controller.pin({{5400}});
  EXPECT_EQ(controller.pinned(), (std::vector<AwakeDuration>{halfHour, fourHours}));
  EXPECT_EQ(changes, 1);
}

}  // namespace
}  // namespace wakeloft
