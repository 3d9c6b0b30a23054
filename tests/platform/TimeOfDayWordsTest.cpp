#include "base/TimeOfDayWords.h"

#include <gtest/gtest.h>

#include <utility>

namespace wakeloft {
namespace {

TEST(TimeOfDayWordsTest, ATimeOfDayIsWrittenInTheLocalesShortFormAndDigits) {
  const std::pair<const char*, const char*> cases[] = {
      {"en_US", "5:00\u202FPM"}, {"de_DE", "17:00"}, {"ar", "\u0665:\u0660\u0660 \u0645"}};
  for (const auto& [locale, words] : cases) EXPECT_EQ(TimeOfDayWords::shortTime(17 * 60, locale), words) << locale;
}

}  // namespace
}  // namespace wakeloft
