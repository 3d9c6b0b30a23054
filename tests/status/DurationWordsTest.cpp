// The words come from the real platform formatters, so these also pin what a
// user of each locale reads.
#include <gtest/gtest.h>

#include <limits>

#include "session/AwakeDuration.h"
#include "status/CountdownText.h"

namespace wakeloft {
namespace {

TEST(CountdownTextTest, EnglishUnitedStates) {
  EXPECT_EQ(CountdownText::formatted(3599.9, "en_US"), "59:59");
  EXPECT_EQ(CountdownText::formatted(3600, "en_US"), "1:00:00");
  EXPECT_EQ(CountdownText::formatted(3909, "en_US"), "1:05:09");
  EXPECT_EQ(CountdownText::formatted(247, "en_US"), "4:07");
  EXPECT_EQ(CountdownText::formatted(0, "en_US"), "0:00");
}

TEST(CountdownTextTest, German) {
  EXPECT_EQ(CountdownText::formatted(3599.9, "de_DE"), "59:59");
  EXPECT_EQ(CountdownText::formatted(3600, "de_DE"), "1:00:00");
  EXPECT_EQ(CountdownText::formatted(3909, "de_DE"), "1:05:09");
  EXPECT_EQ(CountdownText::formatted(247, "de_DE"), "4:07");
  EXPECT_EQ(CountdownText::formatted(0, "de_DE"), "0:00");
}

TEST(CountdownTextTest, LongSessionsStayInHours) {
  EXPECT_EQ(CountdownText::formatted(3 * 86400 + 5, "en_US"), "72:00:05");
}

TEST(CountdownTextTest, NeverShowsMoreThanIsLeftNorGarbage) {
  EXPECT_EQ(CountdownText::formatted(0.999, "en_US"), "0:00");
  EXPECT_EQ(CountdownText::formatted(-5, "en_US"), "0:00");
  EXPECT_EQ(CountdownText::formatted(std::numeric_limits<double>::quiet_NaN(), "en_US"), "0:00");
}

TEST(AwakeDurationLabelTest, EnglishUnitedStates) {
  EXPECT_EQ(AwakeDuration{1800}.label("en_US"), "30m");
  EXPECT_EQ(AwakeDuration{3600}.label("en_US"), "1h");
  EXPECT_EQ(AwakeDuration{5400}.label("en_US"), "1h 30m");
  EXPECT_EQ(AwakeDuration{5459.9}.label("en_US"), "1h 30m");
}

TEST(AwakeDurationLabelTest, German) {
  EXPECT_EQ(AwakeDuration{1800}.label("de_DE"), "30 Min.");
  EXPECT_EQ(AwakeDuration{3600}.label("de_DE"), "1 Std.");
  EXPECT_EQ(AwakeDuration{5400}.label("de_DE"), "1 Std., 30 Min.");
  EXPECT_EQ(AwakeDuration{5459.9}.label("de_DE"), "1 Std., 30 Min.");
}

}  // namespace
}  // namespace wakeloft
