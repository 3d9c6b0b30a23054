#include "status/QuitConfirmation.h"

#include <gtest/gtest.h>

#include <limits>

namespace wakeloft {
namespace {

TEST(QuitConfirmationTest, DeepwakeIsAskedAboutEvenWithTheSessionOff) {
  EXPECT_EQ(QuitConfirmation::asked(false, true, std::nullopt), QuitConfirmation::deepwake(std::nullopt));
  EXPECT_EQ(QuitConfirmation::asked(true, true, 3600), QuitConfirmation::deepwake(3600));
}

TEST(QuitConfirmationTest, NothingToAskWhenNeitherRuns) {
  EXPECT_EQ(QuitConfirmation::asked(false, false, std::nullopt), QuitConfirmation::quitNow());
  EXPECT_EQ(QuitConfirmation::asked(false, false, 600), QuitConfirmation::quitNow());
  EXPECT_EQ(QuitConfirmation::quitNow().remaining(), std::nullopt);
}

TEST(QuitConfirmationTest, TimeLeftIsToldInWholeMinutes) {
  EXPECT_EQ(QuitConfirmation::asked(true, false, 7199), QuitConfirmation::awakeMode(7140));
  EXPECT_EQ(QuitConfirmation::asked(true, false, 60), QuitConfirmation::awakeMode(60));
  EXPECT_EQ(QuitConfirmation::asked(true, false, std::nullopt), QuitConfirmation::awakeMode(std::nullopt));
}

TEST(QuitConfirmationTest, UnderAMinuteOrNotFiniteIsNoTimeAtAll) {
  EXPECT_EQ(QuitConfirmation::asked(true, true, 59), QuitConfirmation::deepwake(std::nullopt));
  EXPECT_EQ(QuitConfirmation::asked(true, false, 59.99), QuitConfirmation::awakeMode(std::nullopt));
  EXPECT_EQ(QuitConfirmation::asked(true, false, -120), QuitConfirmation::awakeMode(std::nullopt));
  EXPECT_EQ(QuitConfirmation::asked(true, false, std::numeric_limits<double>::infinity()),
            QuitConfirmation::awakeMode(std::nullopt));
  EXPECT_EQ(QuitConfirmation::asked(true, false, std::numeric_limits<double>::quiet_NaN()),
            QuitConfirmation::awakeMode(std::nullopt));
}

TEST(QuitConfirmationTest, EqualOnlyWithTheSameQuestionAndTime) {
  EXPECT_NE(QuitConfirmation::awakeMode(3600), QuitConfirmation::deepwake(3600));
  EXPECT_NE(QuitConfirmation::awakeMode(3600), QuitConfirmation::awakeMode(3660));
  EXPECT_NE(QuitConfirmation::awakeMode(std::nullopt), QuitConfirmation::awakeMode(60));
}

}  // namespace
}  // namespace wakeloft
