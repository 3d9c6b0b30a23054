#include "base/TimeOfDayWords.h"

#include <gtest/gtest.h>

namespace wakeloft {
namespace {

TEST(TimeOfDayWordsTest, ATimeOfDayIsWrittenInTheLocalesShortFormAndDigits) {
  const struct {
    int minutes;
    const char* locale;
    const char* words;
  } cases[] = {
      {17 * 60, "en_US", "5:00\u202FPM"},
      {17 * 60, "de_DE", "17:00"},
      {5, "de_DE", "00:05"},
      {17 * 60, "ar", "\u0665:\u0660\u0660 \u0645"},
  };
  for (const auto& c : cases) EXPECT_EQ(TimeOfDayWords::shortTime(c.minutes, c.locale), c.words) << c.locale;
}

}  // namespace
}  // namespace wakeloft
