#include "prefs/PresetDurations.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace wakeloft {
namespace {

const AwakeDuration halfHour{1800}, hour{3600}, twoHours{7200}, fourHours{14400}, eightHours{28800};
const std::vector<AwakeDuration> defaultThree{halfHour, hour, twoHours};
const double nan = std::numeric_limits<double>::quiet_NaN();

TEST(PresetDurationsTest, UpToThreeDistinctCandidatesAreAChoiceAndComeBackSorted) {
  EXPECT_EQ(PresetDurations::validated(std::vector<double>{28800, 3600}),
            (std::vector<AwakeDuration>{hour, eightHours}));
  // No stars at all is a choice too: the panel then offers no presets.
  EXPECT_EQ(PresetDurations::validated(std::vector<double>{}), std::vector<AwakeDuration>{});
  // One bad value spoils the rest.
  for (const auto& seconds : std::vector<std::vector<double>>{
           {1800, 3600, 7200, 14400}, {1800, 1800}, {1800, 3600, 901}, {1800.5}, {nan, 1800}}) {
    EXPECT_EQ(PresetDurations::validated(seconds), std::nullopt) << ::testing::PrintToString(seconds);
  }
  EXPECT_EQ(PresetDurations(std::vector<AwakeDuration>{{600}}).pinned(), defaultThree);
}

TEST(PresetDurationsTest, AFourthStarWaitsForAFreePlaceAndGoesInItsSortedPlace) {
  PresetDurations presets(defaultThree);
  EXPECT_FALSE(presets.canToggle(fourHours));
  presets.toggle(fourHours);
  EXPECT_EQ(presets.pinned(), defaultThree);

  presets.toggle(hour);
  EXPECT_FALSE(presets.isChosen(hour));
  EXPECT_TRUE(presets.canToggle(fourHours));
  presets.toggle(fourHours);
  EXPECT_EQ(presets.pinned(), (std::vector<AwakeDuration>{halfHour, twoHours, fourHours}));
}

}  // namespace
}  // namespace wakeloft
