// The words come from the real platform formatters, so these also pin what a
// user of each locale reads and hears.
#include <gtest/gtest.h>

#include <limits>

#include "session/AwakeDuration.h"
#include "status/CountdownText.h"

namespace wakeloft {
namespace {

TEST(CountdownTextTest, CountdownsAndLabelsInEachLocale) {
  const struct {
    double seconds;
    const char* text;
  } cases[] = {{3599.9, "59:59"}, {3600, "1:00:00"}, {3909, "1:05:09"}, {247, "4:07"}, {0, "0:00"}};
  for (const char* locale : {"en_US", "de_DE"}) {
    for (const auto& c : cases) EXPECT_EQ(CountdownText::formatted(c.seconds, locale), c.text) << locale;
  }

  EXPECT_EQ(CountdownText::formatted(3 * 86400 + 5, "en_US"), "72:00:05");

  EXPECT_EQ(CountdownText::formatted(0.999, "en_US"), "0:00");
  EXPECT_EQ(CountdownText::formatted(-5, "en_US"), "0:00");
  EXPECT_EQ(CountdownText::formatted(std::numeric_limits<double>::quiet_NaN(), "en_US"), "0:00");

  const struct {
    double seconds;
    const char* english;
    const char* german;
  } labels[] = {{1800, "30m", "30 Min."},
               {3600, "1h", "1 Std."},
               {5400, "1h 30m", "1 Std., 30 Min."},
               {5459.9, "1h 30m", "1 Std., 30 Min."}};
  for (const auto& c : labels) {
    EXPECT_EQ(AwakeDuration{c.seconds}.label("en_US"), c.english);
    EXPECT_EQ(AwakeDuration{c.seconds}.label("de_DE"), c.german);
  }

  const struct {
    double seconds;
    const char* english;
    const char* german;
    const char* arabic;
  } spoken[] = {
      {60, "1 minute", "1 Minute", "\u062F\u0642\u064A\u0642\u0629"},  // دقيقة
      {1500, "25 minutes", "25 Minuten", "\u0662\u0665 \u062F\u0642\u064A\u0642\u0629"},  // ٢٥ دقيقة
      {3900, "1 hour, 5 minutes", "1 Stunde, 5 Minuten",
       "\u0633\u0627\u0639\u0629 \u0648\u0665 \u062F\u0642\u0627\u0626\u0642"},  // ساعة و٥ دقائق
      {7200, "2 hours", "2 Stunden", "\u0633\u0627\u0639\u062A\u0627\u0646"},   // ساعتان
  };
  for (const auto& c : spoken) {
    EXPECT_EQ(AwakeDuration{c.seconds}.spokenLabel("en_US"), c.english);
    EXPECT_EQ(AwakeDuration{c.seconds}.spokenLabel("de_DE"), c.german);
    EXPECT_EQ(AwakeDuration{c.seconds}.spokenLabel("ar"), c.arabic);
  }
}
}  // namespace
}  // namespace wakeloft
