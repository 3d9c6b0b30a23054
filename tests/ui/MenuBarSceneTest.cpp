#include "ui/MenuBarScene.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "TestControllers.h"

namespace wakeloft {
namespace {

using testing::ManualDeadlineScheduler;
using testing::TestControllers;

class MenuBarSceneTest : public ::testing::Test {
 protected:
  void SetUp() override {
    app.start();
    scene = std::make_unique<MenuBarScene>(
        app.controllers(), reminder, "en_US", OperatingSystemVersion{14, 5, 0}, app.clocks.dates, ticks,
        MenuBarScene::Views{[this](const MenuBarIcon& icon, const LocalizedText&) { icons.push_back(icon); },
                            [this](const AwakePanelContent& content) { panels.push_back(content); },
                            [this] { ++loginItemsOpened; }},
        [this](std::function<void()> work) { deferred.push_back(std::move(work)); });
  }

  // The next turns of the main loop.
  void runDeferred() {
    while (!deferred.empty()) {
      const auto work = std::move(deferred.front());
      deferred.erase(deferred.begin());
      work();
    }
  }

  TestControllers app;
  std::shared_ptr<UpdateReminder> reminder = std::make_shared<UpdateReminder>();
  std::shared_ptr<ManualDeadlineScheduler> ticks = std::make_shared<ManualDeadlineScheduler>();
  std::vector<MenuBarIcon> icons;
  std::vector<AwakePanelContent> panels;
  std::vector<std::function<void()>> deferred;
  int loginItemsOpened = 0;
  std::unique_ptr<MenuBarScene> scene;
};

TEST_F(MenuBarSceneTest, TheIconShowsAtOnceAndOnTheNextTurnOnlyWhenItChanges) {
  EXPECT_EQ(icons, std::vector<MenuBarIcon>{{}});
  app.awake->turnOn(1800);
  EXPECT_EQ(icons.size(), 1u);
  runDeferred();
  ASSERT_EQ(icons.size(), 2u);
  EXPECT_EQ(icons.back(), (MenuBarIcon{true, true, false}));
  app.awake->turnOn(3600);  // a new deadline changes nothing the icon shows
  runDeferred();
  EXPECT_EQ(icons.size(), 2u);
}

TEST_F(MenuBarSceneTest, TheUpdateDotComesAndGoesWithTheReminder) {
  reminder->willShowUpdate(/*updaterShowsIt=*/false, /*userInitiated=*/false, "1.4");
  runDeferred();
  ASSERT_FALSE(icons.empty());
  EXPECT_TRUE(icons.back().showsUpdateDot);
  reminder->sessionFinished();
  runDeferred();
  EXPECT_FALSE(icons.back().showsUpdateDot);
}

// The session ran out while the panel was closed; its timer has not fired.
TEST_F(MenuBarSceneTest, OpeningBringsTheControllersUpToDateBeforeTheFirstRender) {
  app.awake->turnOn(60);
  app.clocks.pass(61);
  scene->panelWillOpen();
  runDeferred();
  ASSERT_EQ(panels.size(), 1u);
  EXPECT_EQ(panels[0].statusLine.english(), "Off");
}

TEST_F(MenuBarSceneTest, BecomingKeyRefreshesAgainSoAnApprovalLinkCanBeFollowed) {
  scene->panelWillOpen();
  app.loginItemService->setState(LoginItemState::requiresApproval);
  scene->panelBecameKey();
  runDeferred();
  ASSERT_FALSE(panels.empty());
  ASSERT_TRUE(panels.back().login.approval && panels.back().login.approval->link);
  scene->perform(panels.back().login.approval->link->action);
  EXPECT_EQ(loginItemsOpened, 1);
}

TEST_F(MenuBarSceneTest, AClosedPanelIsNotRendered) {
  scene->panelWillOpen();
  scene->panelDidClose();
  app.awake->turnOn(std::nullopt);
  runDeferred();
  EXPECT_EQ(panels.size(), 1u);
}

// The switch was flipped on screen, but the heat warning comes first.
TEST_F(MenuBarSceneTest, ARefusedSwitchIsShownAgainAsThingsStand) {
  app.heatWarning->acknowledged = false;
  app.lid->refresh();
  scene->panelWillOpen();
  ASSERT_EQ(panels.size(), 1u);
  scene->perform(panels.back().deepwake.toggle.action(true));
  runDeferred();
  ASSERT_EQ(panels.size(), 2u);
  EXPECT_EQ(panels[0], panels[1]);
}

TEST_F(MenuBarSceneTest, TheCountdownTicksWhenTheShownSecondChangesWhileThePanelIsOpen) {
  app.awake->turnOn(1800);
  scene->panelWillOpen();
  app.clocks.pass(1);
  ticks->fire();
  ASSERT_FALSE(panels.empty());
  EXPECT_EQ(panels.back().statusLine.english(), "On \u00B7 29:59 left");
  scene->panelDidClose();
  EXPECT_FALSE(ticks->pending);

  // Not a second after opening.
  app.clocks.pass(0.75);
  scene->panelWillOpen();
  ASSERT_TRUE(ticks->pending);
  EXPECT_DOUBLE_EQ(ticks->pending->secondsSince(app.clocks.now()), 0.25);
}

TEST_F(MenuBarSceneTest, OnlyATimerTicksEvenOneStartedWhileThePanelIsOpen) {
  scene->panelWillOpen();
  app.awake->turnOn(std::nullopt);
  runDeferred();
  EXPECT_EQ(ticks->scheduleCount, 0);
  app.awake->turnOn(600);
  runDeferred();
  EXPECT_TRUE(ticks->pending);
}

TEST_F(MenuBarSceneTest, AGoneSceneIgnoresWhatWasLeftForIt) {
  app.awake->turnOn(1800);
  scene->panelWillOpen();
  auto tick = ticks->action;
  app.awake->turnOn(std::nullopt);
  scene.reset();
  EXPECT_FALSE(ticks->pending);  // cancelled on the way out
  const auto shown = panels.size();
  runDeferred();
  if (tick) tick();
  EXPECT_EQ(panels.size(), shown);
}

}  // namespace
}  // namespace wakeloft
