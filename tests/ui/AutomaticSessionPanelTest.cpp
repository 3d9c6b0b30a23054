// The automatic session as the app launches it and the panel and the command
// tell it.

#include <gtest/gtest.h>

#include "AutomaticApp.h"
#include "automation/CommandStatus.h"
#include "automation/PublishedAutomaticSession.h"
#include "base/InMemoryDefaultsDomain.h"
#include "session/UserDefaultsAwakeIntentStore.h"

namespace wakeloft {
namespace {

using testing::AutomaticApp;
using enum AutomaticApp::Fact;

TEST(AutomaticSessionPanelTest, AtLaunchTheSessionComesBackFromTheRulesAndIsNotStoredAsTheUsersIntent) {
  AutomaticApp a;
  a.launch(display);
  EXPECT_TRUE(a.app.awake->isOn() && a.app.awake->isAutomatic());
  EXPECT_EQ(UserDefaultsAwakeIntentStore(a.defaults).load(), StoredAwakeIntent::intent(AwakeIntent::off()));
}

TEST(AutomaticSessionPanelTest, TheStatusNamesTheFirstRuleThatHoldsAndCountsTheOthers) {
  const struct {
    int facts;
    const char *status, *spoken;
  } cases[] = {
      {display, "On · while a display is connected", "Wakeloft, on, while a display is connected"},
      {adapter, "On · while on a power adapter", "Wakeloft, on, while on a power adapter"},
      {xcode, "On · while Xcode is open", "Wakeloft, on, while Xcode is open"},
      {mondayMorning, "On · until 5:00\u202FPM", "Wakeloft, on, until 5:00\u202FPM"},
      {display | xcode, "On · while a display is connected and 1 more",
       "Wakeloft, on, while a display is connected and 1 more"},
      {xcode | mondayMorning, "On · while Xcode is open and 1 more", "Wakeloft, on, while Xcode is open and 1 more"},
  };
  for (const auto& c : cases) {
    AutomaticApp a;
    a.launch(c.facts);
    EXPECT_EQ(a.panel().statusLine.english(), c.status);
    EXPECT_EQ(a.panel().header.spokenStatus.english(), c.spoken);
  }
}

TEST(AutomaticSessionPanelTest, TheGracePeriodCountsDownInTheStatus) {
  AutomaticApp a;
  a.launch(display);
  a.machine->current.hasExternalDisplay = false;
  a.postChanges();
  a.clocks.pass(12);
  EXPECT_EQ(a.panel().statusLine.english(), "On · ending in 0:18");
  EXPECT_EQ(a.panel().header.spokenStatus.english(), "Wakeloft, on, ending in less than a minute");
}

TEST(AutomaticSessionPanelTest, TurningOffPausesUntilTheOneRuleThatHoldsStops) {
  const struct {
    int facts;
    const char* note;
  } cases[] = {
      {display, "Automatic sessions paused until the display is disconnected"},
      {adapter, "Automatic sessions paused until the power adapter is disconnected"},
      {xcode, "Automatic sessions paused until Xcode quits"},
      {mondayMorning, "Automatic sessions paused until 5:00\u202FPM"},
      {display | adapter, "Automatic sessions paused until no rule holds"},
  };
  for (const auto& c : cases) {
    AutomaticApp a;
    a.launch(c.facts);
    a.act(PanelAction::toggleAwakeMode());
    ASSERT_TRUE(a.panel().automaticPause);
    EXPECT_EQ(a.panel().automaticPause->text.english(), c.note);
  }
}

TEST(AutomaticSessionPanelTest, ResumeStartsTheAutomaticSessionAgain) {
  AutomaticApp a;
  a.launch(xcode);
  a.act(PanelAction::toggleAwakeMode());
  a.act(a.panel().automaticPause->link->action);
  EXPECT_TRUE(a.app.awake->isOn() && a.app.awake->isAutomatic());
  EXPECT_FALSE(a.panel().automaticPause);
}

TEST(AutomaticSessionPanelTest, OnlyOnBatteryWithoutDeepwakeDoesTheExplanationSayClosingTheLidStillSleeps) {
  const struct {
    int facts;
    bool deepwake, warns;
  } cases[] = {{display, false, true}, {display | adapter, false, false}, {display, true, false}};
  for (const auto& c : cases) {
    AutomaticApp a;
    a.launch(c.facts);
    if (c.deepwake) a.act(PanelAction::setDeepwake(true));
    EXPECT_EQ(a.panel().explanation == TextCatalog::lidClosedSleepsOnBattery, c.warns) << c.facts << c.deepwake;
  }
}

TEST(AutomaticSessionPanelTest, TheCommandsStatusTellsTheRuleThatHoldsWhileTheSessionRuns) {
  AutomaticApp a;
  a.launch(display | xcode);
  PublishedAutomaticSession published(a.app.awake, a.app.automatic, a.defaults);
  const auto status = [&] {
    CommandStatus::Facts facts{.isAppRunning = true, .automaticReason = PublishedAutomaticSession::read(a.defaults)};
    return CommandStatus::render(facts, a.clocks.now(), "en_US");
  };
  EXPECT_EQ(status(), "Wakeloft: running\nAwake: on, automatically, while a display is connected and 1 more\n"
                      "Deepwake: off\n");
  a.act(PanelAction::toggleAwakeMode());
  EXPECT_EQ(status(), "Wakeloft: running\nAwake: off\nDeepwake: off\n");
}

TEST(AutomaticSessionPanelTest, APublishedReasonThatIsNotOneLineOfTextIsNone) {
  InMemoryDefaultsDomain defaults;
  const DefaultsValue garbage[] = {true, "two\nlines", std::string(3000, 'x'), "\xC3"};
  for (const auto& value : garbage) {
    defaults.set(PublishedAutomaticSession::key, value);
    EXPECT_EQ(PublishedAutomaticSession::read(defaults), std::nullopt);
  }
}

}  // namespace
}  // namespace wakeloft
