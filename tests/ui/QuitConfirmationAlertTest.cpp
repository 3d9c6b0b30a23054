#include "ui/QuitConfirmationAlert.h"

#include <gtest/gtest.h>


namespace wakeloft {
namespace {

constexpr const char* awakeConsequence =
    "Your Mac can fall asleep on its own again. Awake mode turns back on the next time you open Wakeloft.";
constexpr const char* deepwakeConsequence =
    "Your Mac can sleep again with the lid open or closed. Awake mode turns back on the next time you open "
    "Wakeloft. Deepwake stays off.";

TEST(QuitConfirmationAlertTest, TheConsequenceAloneWithoutTimeLeftOrAfterItDeepwakeInItsOwnWordsAndQuitNowAsksNothing) {
  const auto alert =
      QuitConfirmationAlert::make(QuitConfirmation::awakeMode(std::nullopt), "en_US", LayoutDirection::leftToRight);
  ASSERT_TRUE(alert);
  EXPECT_EQ(alert->title.english(), "Quit and stop awake mode?");
  EXPECT_EQ(alert->message.english(), awakeConsequence);
  ASSERT_EQ(alert->buttons.size(), 2u);
  EXPECT_EQ(alert->buttons[0].title.english(), "Quit");
  EXPECT_EQ(alert->buttons[0].keyEquivalent, "");
  EXPECT_EQ(alert->buttons[1].title.english(), "Cancel");
  EXPECT_EQ(alert->buttons[1].keyEquivalent, "\x1b");
  EXPECT_TRUE(QuitConfirmationAlert::isConfirmed(0));
  EXPECT_FALSE(QuitConfirmationAlert::isConfirmed(1));

  EXPECT_EQ(QuitConfirmationAlert::make(QuitConfirmation::quitNow(), "en_US", LayoutDirection::leftToRight),
            std::nullopt);

  const auto english =
      QuitConfirmationAlert::make(QuitConfirmation::awakeMode(1500), "en_US", LayoutDirection::leftToRight);
  ASSERT_TRUE(english);
  EXPECT_EQ(english->message.english(), std::string("25 minutes left in this session. ") + awakeConsequence);

  const auto deepwake = QuitConfirmationAlert::make(QuitConfirmation::deepwake(3600), "en_US", LayoutDirection::rightToLeft);
  ASSERT_TRUE(deepwake);
  ASSERT_EQ(deepwake->buttons.size(), 2u);
  EXPECT_EQ(deepwake->title.english(), "Quit and end Deepwake?");
  EXPECT_EQ(deepwake->message.english(), std::string("1 hour left in this session. ") + deepwakeConsequence);
  EXPECT_EQ(deepwake->buttons[0].title.english(), "Quit and end Deepwake");
  EXPECT_EQ(deepwake->layoutDirection, LayoutDirection::rightToLeft);
}

}  // namespace
}  // namespace wakeloft
