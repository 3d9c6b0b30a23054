// The words come from the real platform formatters.
#include <gtest/gtest.h>

#include <limits>

#include "session/AwakeDuration.h"
#include "status/CountdownText.h"

namespace wakeloft {
namespace {

TEST(CountdownTextTest, MinutesAndSecondsThenHoursWithoutADayFieldInEachLocale) {
  const std::pair<double, const char*> cases[] = {
      {3599.9, "59:59"}, {3600, "1:00:00"}, {247, "4:07"}, {3 * 86400 + 5, "72:00:05"}};
  for (const char* locale : {"en_US", "de_DE"}) {
    for (const auto& [seconds, text] : cases) EXPECT_EQ(CountdownText::formatted(seconds, locale), text) << locale;
  }
}

TEST(CountdownTextTest, NoWholeSecondLeftReadsAsZero) {
  for (const double seconds : {0.999, -5.0, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(CountdownText::formatted(seconds, "en_US"), "0:00") << seconds;
  }
}

// The plural forms are the formatter's: this shows words, in the locale given.
TEST(AwakeDurationTest, TheSpokenLabelInWordsInTheGivenLocale) {
  EXPECT_EQ(AwakeDuration{60}.spokenLabel("en_US"), "1 minute");
  EXPECT_EQ(AwakeDuration{7200}.spokenLabel("de_DE"), "2 Stunden");
  EXPECT_EQ(AwakeDuration{1500}.spokenLabel("ar"), "\u0662\u0665 \u062F\u0642\u064A\u0642\u0629");  // ٢٥ دقيقة
}

}  // namespace
}  // namespace wakeloft
