#include "ui/PanelAction.h"

#include <gtest/gtest.h>

#include <utility>
#include <string>
#include <vector>

#include "TestControllers.h"
#include "lid/LidSleepBlockerError.h"
#include "ui/AwakePanelContent.h"

namespace wakeloft {
namespace {

using testing::TestControllers;

class PanelActionTest : public ::testing::Test {
 protected:
  void SetUp() override { app.start(); }
  void run(const PanelAction& action) {
    perform(action, app.controllers(), [this] { ++settingsOpened; }, [this] { ++applicationsShown; });
  }

  TestControllers app;
  int settingsOpened = 0;
  int applicationsShown = 0;
};

TEST_F(PanelActionTest, TheMainButtonEndsDeepwakeAtOnceWithTheSession) {
  app.turnOnDeepwake();
  run(PanelAction::toggleAwakeMode());
  EXPECT_FALSE(app.awake->isOn());
  EXPECT_FALSE(app.lid->isOn());  // not only once its deadline timer has run
}

TEST_F(PanelActionTest, APresetStartsATimedSessionAndDroppingTheTimerKeepsItOn) {
  run(PanelAction::turnOnAwakeMode(AwakeDuration{1800}));
  EXPECT_EQ(app.awake->activeUntil(), app.clocks.now().adding(1800));
  run(PanelAction::turnOnAwakeMode(std::nullopt));
  EXPECT_TRUE(app.awake->isOn());
  EXPECT_EQ(app.awake->activeUntil(), std::nullopt);
}

TEST_F(PanelActionTest, TheDeepwakeSwitchStartsItsDefaultSessionAndTurnedOffLeavesTheSessionRunning) {
  run(PanelAction::setDeepwake(true));
  EXPECT_TRUE(app.lid->isOn());
  EXPECT_EQ(app.awake->activeUntil(), app.clocks.now().adding(7200));
  run(PanelAction::setDeepwake(false));
  EXPECT_FALSE(app.lid->isOn());
  EXPECT_TRUE(app.awake->isOn());
}

TEST_F(PanelActionTest, TheLoginSwitchReachesTheLoginItemAndTheLinksTheirViews) {
  run(PanelAction::setOpenAtLogin(true));
  EXPECT_TRUE(app.loginItem->isEnabled());
  run(PanelAction::setOpenAtLogin(false));
  EXPECT_FALSE(app.loginItem->isRegistered());
  run(PanelAction::openLoginItemsSettings());
  run(PanelAction::revealApplicationsFolder());
  EXPECT_EQ(std::pair(settingsOpened, applicationsShown), std::pair(1, 1));
}

TEST_F(PanelActionTest, AcknowledgingTheHeatWarningUnlocksDeepwake) {
  app.heatWarning->acknowledged = false;
  app.start();
  run(PanelAction::acknowledgeHeatWarning());
  run(PanelAction::setDeepwake(true));
  EXPECT_TRUE(app.lid->isOn());
}

TEST_F(PanelActionTest, DontRetryForgetsTheRequestedSession) {
  app.intents->stored = StoredAwakeIntent::intent(AwakeIntent::indefinite());
  app.assertion->nextRefusal = -1;
  app.start();
  run(PanelAction::stopRetrying());
  EXPECT_FALSE(app.awake->isRequested());
  EXPECT_FALSE(app.intents->isAwakeRequested());
}

// Changed elsewhere, and no timer has fired. The session's end is checked
// before the lease, so Deepwake ends with it at once.
TEST_F(PanelActionTest, OpeningThePanelRefreshesLoginSessionLeaseAndLid) {
  app.turnOnDeepwake(600);
  app.heatWarning->acknowledged = false;
  app.loginItemService->setState(LoginItemState::requiresApproval);
  app.clocks.pass(601);
  run(AwakePanelContent::onOpen());
  EXPECT_TRUE(app.loginItem->needsApproval());
  EXPECT_FALSE(app.awake->isOn());
  EXPECT_FALSE(app.lid->isOn());
  EXPECT_FALSE(app.lid->hasAcknowledgedHeatWarning());
}

}  // namespace
}  // namespace wakeloft
