#include "ui/MenuBarScene.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "TestControllers.h"
#include "ui/PanelAction.h"

namespace wakeloft {
namespace {

using testing::ManualDeadlineScheduler;
using testing::TestControllers;

class MenuBarSceneTest : public ::testing::Test {
 protected:
  void SetUp() override { app.start(); }

  void makeScene() {
    scene = std::make_unique<MenuBarScene>(
        app.controllers(), reminder, "en_US", OperatingSystemVersion{14, 5, 0}, app.clocks.dates, ticks,
        MenuBarScene::Views{[this](const MenuBarIcon& icon, const LocalizedText& label) {
                              icons.push_back(icon);
                              iconLabels.push_back(label.english());
                            },
                            [this](const AwakePanelContent& content) { panels.push_back(content); },
                            [this] { ++loginItemsOpened; }},
        [this](std::function<void()> work) { deferred.push_back(std::move(work)); });
  }

  // The next turns of the main loop.
  void runDeferred() {
    while (!deferred.empty()) {
      auto due = std::move(deferred);
      deferred.clear();
      for (auto& work : due) work();
    }
  }

  // What the view was last given; empty, and a failure, when nothing was.
  std::string shownStatusLine() const {
    EXPECT_FALSE(panels.empty()) << "no panel was rendered";
    return panels.empty() ? "" : panels.back().statusLine.english();
  }
  std::string shownIconLabel() const {
    EXPECT_FALSE(iconLabels.empty()) << "no icon was shown";
    return iconLabels.empty() ? "" : iconLabels.back();
  }

  TestControllers app;
  std::shared_ptr<UpdateReminder> reminder = std::make_shared<UpdateReminder>();
  std::shared_ptr<ManualDeadlineScheduler> ticks = std::make_shared<ManualDeadlineScheduler>();
  std::vector<MenuBarIcon> icons;
  std::vector<std::string> iconLabels;
  std::vector<AwakePanelContent> panels;
  std::vector<std::function<void()>> deferred;
  int loginItemsOpened = 0;
  std::unique_ptr<MenuBarScene> scene;
};

TEST_F(MenuBarSceneTest, TheIconShowsAtOnceAndAgainOnlyWhenItChanges) {
  makeScene();
  ASSERT_EQ(icons.size(), 1u);
  EXPECT_EQ(shownIconLabel(), "Wakeloft: off");

  app.awake->turnOn(1800);
  EXPECT_EQ(icons.size(), 1u);  // not before the next turn
  runDeferred();
  ASSERT_EQ(icons.size(), 2u);
  EXPECT_EQ(icons.back(), (MenuBarIcon{true, true, false}));

  // A new deadline or a star changes nothing the icon shows.
  app.awake->turnOn(3600);
  app.presets->pin({AwakeDuration{900}});
  runDeferred();
  EXPECT_EQ(icons.size(), 2u);
  EXPECT_TRUE(panels.empty());  // the panel is closed
}

TEST_F(MenuBarSceneTest, TheUpdateDotComesAndGoesWithTheReminder) {
  makeScene();
  reminder->willShowUpdate(/*updaterShowsIt=*/false, /*userInitiated=*/false, "1.4");
  runDeferred();
  ASSERT_EQ(icons.size(), 2u);
  EXPECT_TRUE(icons.back().showsUpdateDot);

  reminder->sessionFinished();
  runDeferred();
  EXPECT_FALSE(icons.back().showsUpdateDot);
}

TEST_F(MenuBarSceneTest, OpeningBringsTheControllersUpToDateBeforeTheFirstRender) {
  app.awake->turnOn(60);
  makeScene();
  // The session ran out and the login item was approved while the panel was
  // closed; neither the timer nor the system said so yet.
  app.clocks.pass(61);
  app.loginItemService->setState(LoginItemState::enabled);

  scene->panelWillOpen();
  ASSERT_EQ(panels.size(), 1u);
  EXPECT_EQ(shownStatusLine(), "Off");
  EXPECT_TRUE(panels[0].login.toggle.isOn);
  EXPECT_EQ(shownIconLabel(), "Wakeloft: off");
  runDeferred();
  EXPECT_EQ(panels.size(), 1u);  // already shown as it is
}

TEST_F(MenuBarSceneTest, BecomingKeyRefreshesAgainAndAClosedPanelIsNotRenderedButReopensInFull) {
  makeScene();
  scene->panelWillOpen();
  app.loginItemService->setState(LoginItemState::requiresApproval);
  runDeferred();
  EXPECT_EQ(panels.size(), 1u);

  scene->panelBecameKey();
  runDeferred();
  ASSERT_EQ(panels.size(), 2u);
  ASSERT_TRUE(panels.back().login.approval);
  ASSERT_TRUE(panels.back().login.approval->link);
  scene->perform(panels.back().login.approval->link->action);
  EXPECT_EQ(loginItemsOpened, 1);

  // Closed, the panel is not rendered.
  scene->panelDidClose();
  app.awake->turnOn(std::nullopt);
  runDeferred();
  EXPECT_EQ(panels.size(), 2u);

  // Reopened with nothing changed since, it is still shown in full: the view
  // builds a new panel each time.
  scene->panelWillOpen();
  scene->panelDidClose();
  scene->panelWillOpen();
  EXPECT_EQ(panels.size(), 4u);
  EXPECT_EQ(shownStatusLine(), "On");
}

TEST_F(MenuBarSceneTest, ChangesMadeTogetherRenderOnceAndEachLaterOneAgain) {
  app.turnOnDeepwake();
  makeScene();
  scene->panelWillOpen();
  ASSERT_EQ(panels.size(), 1u);

  // The main button ends Deepwake, then the session: several properties of
  // two controllers change in one action.
  scene->perform(panels.back().mainButton.action);
  app.helper->answerAll();
  EXPECT_EQ(panels.size(), 1u);
  runDeferred();
  ASSERT_EQ(panels.size(), 2u);
  EXPECT_EQ(panels.back().mainButton.title.english(), "Turn On");
  EXPECT_FALSE(panels.back().deepwake.toggle.isOn);

  // A new star shows in the open panel.
  app.presets->pin({AwakeDuration{1800}});
  runDeferred();
  ASSERT_EQ(panels.back().sessionControls.presets.size(), 1u);
  EXPECT_EQ(panels.back().sessionControls.presets[0].action, PanelAction::turnOnAwakeMode(AwakeDuration{1800}));
}

TEST_F(MenuBarSceneTest, ARefusedSwitchIsShownAgainAsThingsStand) {
  app.heatWarning->acknowledged = false;
  app.start();
  makeScene();
  scene->panelWillOpen();
  ASSERT_EQ(panels.size(), 1u);

  // The switch was flipped on screen, but the heat warning comes first.
  scene->perform(panels.back().deepwake.toggle.action(true));
  runDeferred();
  ASSERT_EQ(panels.size(), 2u);
  EXPECT_FALSE(panels.back().deepwake.toggle.isOn);
  EXPECT_EQ(panels[0], panels[1]);
}

TEST_F(MenuBarSceneTest, TheCountdownTicksEachSecondWhileThePanelIsOpen) {
  app.awake->turnOn(1800);
  makeScene();
  scene->panelWillOpen();
  EXPECT_EQ(shownStatusLine(), "On \u00B7 30:00 left");
  ASSERT_TRUE(ticks->pending);
  EXPECT_EQ(ticks->pending->secondsSince(app.clocks.now()), 1.0);

  app.clocks.pass(1);
  ticks->fire();
  EXPECT_EQ(shownStatusLine(), "On \u00B7 29:59 left");
  ASSERT_TRUE(ticks->pending);

  scene->panelDidClose();
  EXPECT_FALSE(ticks->pending);

  // A tick comes when the shown second changes, not a second after opening.
  app.clocks.pass(0.75);
  scene->panelWillOpen();
  EXPECT_EQ(shownStatusLine(), "On \u00B7 29:58 left");
  ASSERT_TRUE(ticks->pending);
  EXPECT_DOUBLE_EQ(ticks->pending->secondsSince(app.clocks.now()), 0.25);
  EXPECT_EQ(MenuBarScene::untilNextSecond(0), 0);
}

TEST_F(MenuBarSceneTest, NothingTicksWithoutATimer) {
  makeScene();
  scene->panelWillOpen();
  app.awake->turnOn(std::nullopt);
  runDeferred();
  EXPECT_EQ(ticks->scheduleCount, 0);

  // A timer started while the panel is open starts the ticking; ending it
  // stops it.
  app.awake->turnOn(600);
  runDeferred();
  EXPECT_TRUE(ticks->pending);
  app.awake->turnOff();
  runDeferred();
  EXPECT_FALSE(ticks->pending);
}

TEST_F(MenuBarSceneTest, AGoneSceneIgnoresWhatWasLeftForIt) {
  app.awake->turnOn(1800);
  makeScene();
  scene->panelWillOpen();
  auto tick = ticks->action;
  app.awake->turnOn(std::nullopt);
  scene.reset();
  EXPECT_FALSE(ticks->pending);  // cancelled on the way out

  const auto shown = panels.size();
  runDeferred();
  if (tick) tick();
  app.awake->turnOff();
  runDeferred();
  EXPECT_EQ(panels.size(), shown);
  EXPECT_TRUE(deferred.empty());
}

}  // namespace
}  // namespace wakeloft
