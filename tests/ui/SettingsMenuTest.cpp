#include "ui/SettingsMenu.h"
#include "ui/UpdateReminder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace wakeloft {
namespace {

using Command = SettingsMenu::Command;
using Popup = SettingsMenu::Popup;

TEST(UpdateReminderTest, OnlyAScheduledUpdateTheUpdaterCannotBringToTheFrontWaitsUntilAttended) {
  UpdateReminder reminder;
  reminder.willShowUpdate(true, false, "2.1");  // in front already
  reminder.willShowUpdate(false, true, "2.1");  // the user asked
  EXPECT_EQ(reminder.waitingVersion(), std::nullopt);
  reminder.willShowUpdate(false, false, "2.1");
  EXPECT_EQ(reminder.waitingVersion(), "2.1");
  reminder.userAttended();
  EXPECT_EQ(reminder.waitingVersion(), std::nullopt);
  reminder.willShowUpdate(false, false, "2.2");
  reminder.sessionFinished();
  EXPECT_EQ(reminder.waitingVersion(), std::nullopt);
}

TEST(SettingsMenuTest, TheFeedbackAddressCarriesTheLanguageAppAndSystemVersions) {
  const std::string site = std::string("https://") + WAKELOFT_FEEDBACK_HOST;
  EXPECT_EQ(SettingsMenu::feedbackAddress(AboutInfo{"1.4", "212"}, {14, 6, 1}, {"de", "en"}),
            site + "/de/feedback?app=1.4%20%28212%29&macos=14.6.1");
  EXPECT_EQ(SettingsMenu::feedbackAddress(std::nullopt, {15, 0, 0}, {}), site + "/feedback?macos=15.0");
  EXPECT_EQ(SettingsMenu::feedbackAddress(AboutInfo{"2.0", ""}, {15, 1, 0}, {"en"}),
            site + "/feedback?app=2.0&macos=15.1");
}

TEST(SettingsMenuTest, CommandsOpenOnePopoverAtATimeWithTheAppInFrontOrReachTheirActions) {
  std::vector<std::string> calls;
  SettingsMenu menu({[&] { calls.push_back("update"); }, [&] { calls.push_back("feedback"); },
                     [&] { calls.push_back("quit"); }, [&] { calls.push_back("activate"); }});
  menu.perform(Command::choosePresetDurations);
  EXPECT_EQ(menu.popup(), Popup::settings);
  menu.perform(Command::safety);
  EXPECT_EQ(menu.popup(), Popup::safety);
  menu.perform(Command::automatic);
  EXPECT_EQ(menu.popup(), Popup::automatic);
  menu.perform(Command::about);
  menu.perform(Command::checkForUpdates);
  menu.perform(Command::sendFeedback);
  menu.perform(Command::quit);
  EXPECT_EQ(calls, (std::vector<std::string>{"activate", "activate", "activate", "activate", "update", "feedback", "quit"}));
  EXPECT_EQ(menu.popup(), Popup::about);
  menu.popupClosed();
  EXPECT_EQ(menu.popup(), std::nullopt);
}

}  // namespace
}  // namespace wakeloft
