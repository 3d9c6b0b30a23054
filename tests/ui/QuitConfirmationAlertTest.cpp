#include "ui/QuitConfirmationAlert.h"

#include <gtest/gtest.h>

namespace wakeloft {
namespace {

using Alert = QuitConfirmationAlert;

TEST(QuitConfirmationAlertTest, NothingIsAskedWhenThereIsNothingToLose) {
  EXPECT_EQ(Alert::make(QuitConfirmation::quitNow(), "en_US", LayoutDirection::leftToRight), std::nullopt);
}

TEST(QuitConfirmationAlertTest, TheTimeLeftInFullWordsComesBeforeWhatQuittingEnds) {
  for (const auto& [question, title, message] : std::vector<std::tuple<QuitConfirmation, std::string, std::string>>{
           {QuitConfirmation::awakeMode(std::nullopt), "Quit and stop awake mode?",
            "Your Mac can fall asleep on its own again. Awake mode turns back on the next time you open Wakeloft."},
           {QuitConfirmation::deepwake(3600), "Quit and end Deepwake?",
            "1 hour left in this session. Your Mac can sleep again with the lid open or closed. Awake mode turns back "
            "on the next time you open Wakeloft. Deepwake stays off."}}) {
    const auto alert = Alert::make(question, "en_US", LayoutDirection::rightToLeft);
    ASSERT_TRUE(alert);
    EXPECT_EQ(alert->title.english(), title);
    EXPECT_EQ(alert->message.english(), message);
    EXPECT_EQ(alert->layoutDirection, LayoutDirection::rightToLeft);
  }
}

}  // namespace
}  // namespace wakeloft
