#include "ui/SettingsMenu.h"
#include "ui/UpdateReminder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace wakeloft {
namespace {

using Command = SettingsMenu::Command;
using Popup = SettingsMenu::Popup;

TEST(SettingsMenuTest, ItemsComeInOrderWithOnlyQuitOnAKeyAndAWaitingUpdateOnTheButtonAndInItsItem) {
  const auto items = SettingsMenu::items();
  ASSERT_EQ(items.size(), 8u);
  const std::vector<std::string> titles = {"Choose preset durations\u2026", "Safety\u2026", "Automatic\u2026", "About Wakeloft",
                                           "Check for Updates\u2026", "Send Feedback"};
  for (std::size_t i = 0; i < titles.size(); ++i) {
    EXPECT_EQ(items[i].title->english(), titles[i]);
    EXPECT_EQ(items[i].keyEquivalent, "");
  }
  EXPECT_EQ(items[0].command, Command::choosePresetDurations);
  EXPECT_EQ(items[1].command, Command::safety);
  EXPECT_EQ(items[2].command, Command::automatic);
  EXPECT_EQ(items[5].command, Command::sendFeedback);
  EXPECT_TRUE(items[6].isSeparator());
  EXPECT_EQ(items[7].title->english(), "Quit Wakeloft");
  EXPECT_EQ(items[7].command, Command::quit);
  EXPECT_EQ(items[7].keyEquivalent, "q");

  EXPECT_EQ(SettingsMenu::buttonSymbolFor(std::nullopt), "gearshape");
  EXPECT_EQ(SettingsMenu::buttonSymbolFor("2.1"), "arrow.down.circle");
  EXPECT_EQ(SettingsMenu::buttonAccessibilityLabel("2.1").english(), "Settings, version 2.1 is ready to install");
  const auto waiting = SettingsMenu::items("2.1");
  ASSERT_EQ(waiting.size(), items.size());
  EXPECT_EQ(waiting[4].title->english(), "Install Version 2.1\u2026");
  EXPECT_EQ(waiting[4].command, Command::checkForUpdates);
}

TEST(UpdateReminderTest, OnlyAScheduledUpdateTheUpdaterCannotBringToTheFrontWaitsUntilAttended) {
  UpdateReminder reminder;
  int changes = 0;
  const auto subscription = reminder.changed().observe([&] { ++changes; });
  reminder.willShowUpdate(true, false, "2.1");   // in front already
  reminder.willShowUpdate(false, true, "2.1");   // the user asked
  EXPECT_EQ(reminder.waitingVersion(), std::nullopt);
  EXPECT_EQ(changes, 0);

  reminder.willShowUpdate(false, false, "2.1");
  EXPECT_EQ(reminder.waitingVersion(), "2.1");
  reminder.userAttended();
  EXPECT_EQ(reminder.waitingVersion(), std::nullopt);
  reminder.willShowUpdate(false, false, "2.2");
  reminder.sessionFinished();
  EXPECT_EQ(reminder.waitingVersion(), std::nullopt);
  EXPECT_EQ(changes, 4);
}

TEST(SettingsMenuTest, CommandsOpenOnePopoverAtATimeBelowTheAnchorOnItsLeadingSideOrReachTheirActions) {
  const SettingsMenu::Bounds anchor{0, 0, 232, 1};
  EXPECT_EQ(SettingsMenu::popUpLocation(anchor, LayoutDirection::leftToRight), (SettingsMenu::Point{-14, -14}));
  EXPECT_EQ(SettingsMenu::popUpLocation(anchor, LayoutDirection::rightToLeft), (SettingsMenu::Point{246, -14}));
  const SettingsMenu::Bounds offset{10, 5, 100, 20};
  EXPECT_EQ(SettingsMenu::popUpLocation(offset, LayoutDirection::leftToRight), (SettingsMenu::Point{-4, -9}));
  EXPECT_EQ(SettingsMenu::popUpLocation(offset, LayoutDirection::rightToLeft), (SettingsMenu::Point{124, -9}));

  const std::string site = std::string("https://") + WAKELOFT_FEEDBACK_HOST;
  EXPECT_EQ(SettingsMenu::feedbackAddress(AboutInfo{"1.4", "212"}, {14, 6, 1}, {"de", "en"}),
            site + "/de/feedback?app=1.4%20%28212%29&macos=14.6.1");
  EXPECT_EQ(SettingsMenu::feedbackAddress(std::nullopt, {15, 0, 0}, {}), site + "/feedback?macos=15.0");
  EXPECT_EQ(SettingsMenu::feedbackAddress(AboutInfo{"2.0", ""}, {15, 1, 0}, {"en"}),
            site + "/feedback?app=2.0&macos=15.1");

  std::vector<std::string> calls;
  SettingsMenu menu({[&] { calls.push_back("update"); }, [&] { calls.push_back("feedback"); },
                     [&] { calls.push_back("quit"); }, [&] { calls.push_back("activate"); }});
  EXPECT_EQ(menu.popup(), std::nullopt);

  menu.perform(Command::choosePresetDurations);
  EXPECT_EQ(menu.popup(), Popup::settings);
  menu.perform(Command::safety);  // replaces the preset chooser
  EXPECT_EQ(menu.popup(), Popup::safety);
  menu.perform(Command::about);
  EXPECT_EQ(menu.popup(), Popup::about);
  EXPECT_EQ(calls, (std::vector<std::string>{"activate", "activate", "activate"}));

  menu.perform(Command::checkForUpdates);
  menu.perform(Command::sendFeedback);
  menu.perform(Command::quit);
  EXPECT_EQ(calls, (std::vector<std::string>{"activate", "activate", "activate", "update", "feedback", "quit"}));
  EXPECT_EQ(menu.popup(), Popup::about);

  menu.popupClosed();
  EXPECT_EQ(menu.popup(), std::nullopt);
}

}  // namespace
}  // namespace wakeloft
