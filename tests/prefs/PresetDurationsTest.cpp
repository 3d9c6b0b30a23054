#include "prefs/PresetDurations.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace wakeloft {
namespace {

const AwakeDuration halfHour{1800}, hour{3600}, twoHours{7200}, fourHours{14400}, sixHours{21600}, eightHours{28800};
const std::vector<AwakeDuration> defaultThree{halfHour, hour, twoHours};

std::optional<std::vector<AwakeDuration>> validated(std::vector<double> seconds) {
  return PresetDurations::validated(seconds);
}

TEST(PresetDurationsTest, ValidChoicesComeBackSortedOnlyCandidatesAndNoFourthStarCanBeStarredAndStarredOnesAlwaysUnstarred) {
  EXPECT_EQ(validated({7200, 1800}), (std::vector<AwakeDuration>{halfHour, twoHours}));
  EXPECT_EQ(validated({28800, 3600, 21600}), (std::vector<AwakeDuration>{hour, sixHours, eightHours}));
  // No stars at all is a choice too: the panel then offers no presets.
  EXPECT_EQ(validated({}), std::vector<AwakeDuration>{});

  EXPECT_EQ(validated({1800, 3600, 7200, 14400}), std::nullopt);
  EXPECT_EQ(validated({1800, 1800}), std::nullopt);
  EXPECT_EQ(validated({900}), std::nullopt);
  EXPECT_EQ(validated({1800.5}), std::nullopt);
  EXPECT_EQ(validated({std::numeric_limits<double>::quiet_NaN(), 1800}), std::nullopt);
  // One bad value spoils the rest.
  EXPECT_EQ(validated({1800, 3600, 901}), std::nullopt);

  PresetDurations presets(defaultThree);
  EXPECT_TRUE(presets.isChosen(hour));
  EXPECT_FALSE(presets.isChosen(fourHours));

  EXPECT_FALSE(presets.canToggle(fourHours));
  presets.toggle(fourHours);
  EXPECT_EQ(presets.pinned(), defaultThree);

  EXPECT_TRUE(presets.canToggle(hour));
  presets.toggle(hour);
  EXPECT_EQ(presets.pinned(), (std::vector<AwakeDuration>{halfHour, twoHours}));
  EXPECT_FALSE(presets.isChosen(hour));

  // With a place free, the fourth one goes in, in its sorted place.
  EXPECT_TRUE(presets.canToggle(fourHours));
  presets.toggle(fourHours);
  EXPECT_EQ(presets.pinned(), (std::vector<AwakeDuration>{halfHour, twoHours, fourHours}));

  for (const AwakeDuration other : {AwakeDuration{900}, AwakeDuration{3600.25},
                                    AwakeDuration{std::numeric_limits<double>::quiet_NaN()}}) {
    EXPECT_FALSE(presets.canToggle(other)) << other.seconds;
    EXPECT_FALSE(presets.isChosen(other)) << other.seconds;
    presets.toggle(other);
    EXPECT_EQ(presets.pinned(), (std::vector<AwakeDuration>{halfHour, twoHours, fourHours})) << other.seconds;
  }

  EXPECT_EQ(PresetDurations(std::vector<AwakeDuration>{eightHours, hour}).pinned(),
            (std::vector<AwakeDuration>{hour, eightHours}));
  EXPECT_EQ(PresetDurations(std::vector<AwakeDuration>{}).pinned(), std::vector<AwakeDuration>{});
  EXPECT_EQ(PresetDurations(std::vector<AwakeDuration>{{600}}).pinned(), defaultThree);
  EXPECT_EQ(PresetDurations(std::vector<AwakeDuration>{hour, hour}), PresetDurations(defaultThree));
}

}  // namespace
}  // namespace wakeloft
