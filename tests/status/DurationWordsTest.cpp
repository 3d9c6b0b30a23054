// The words come from the real platform formatters, so these also pin what a
// user of each locale reads and hears.
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

TEST(AwakeDurationTest, TheShortLabelInWholeMinutes) {
  EXPECT_EQ(AwakeDuration{3600}.label("en_US"), "1h");
  EXPECT_EQ(AwakeDuration{5459.9}.label("en_US"), "1h 30m");
  EXPECT_EQ(AwakeDuration{5459.9}.label("de_DE"), "1 Std., 30 Min.");
}

TEST(AwakeDurationTest, TheSpokenLabelWithEachLanguagesPluralForms) {
  const struct {
    double seconds;
    const char* english;
    const char* german;
    const char* arabic;
  } spoken[] = {
      {60, "1 minute", "1 Minute", "\u062F\u0642\u064A\u0642\u0629"},                     // دقيقة
      {1500, "25 minutes", "25 Minuten", "\u0662\u0665 \u062F\u0642\u064A\u0642\u0629"},  // ٢٥ دقيقة
      {7200, "2 hours", "2 Stunden", "\u0633\u0627\u0639\u062A\u0627\u0646"},             // ساعتان
  };
  for (const auto& c : spoken) {
    EXPECT_EQ(AwakeDuration{c.seconds}.spokenLabel("en_US"), c.english);
    EXPECT_EQ(AwakeDuration{c.seconds}.spokenLabel("de_DE"), c.german);
    EXPECT_EQ(AwakeDuration{c.seconds}.spokenLabel("ar"), c.arabic);
  }
}

}  // namespace
}  // namespace wakeloft
