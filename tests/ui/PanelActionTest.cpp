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
    perform(
        action, app.controllers(), [this] { ++settingsOpened; }, [this] { ++applicationsShown; });
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

// Each control in turn, from where the one before left off.
TEST_F(PanelActionTest, EachControlReachesItsControllerOrView) {
  const auto until = [&](double seconds) { return app.awake->activeUntil() == app.clocks.now().adding(seconds); };
  for (const auto& [action, done, what] : std::vector<std::tuple<PanelAction, std::function<bool()>, const char*>>{
           {PanelAction::setDeepwake(true), [&] { return app.lid->isOn() && until(7200); },
            "Deepwake with its session"},
           {PanelAction::setDeepwake(false), [&] { return !app.lid->isOn() && app.awake->isOn(); }, "Deepwake off"},
           {PanelAction::turnOnAwakeMode(AwakeDuration{1800}), [&] { return until(1800); }, "a preset"},
           {PanelAction::turnOnAwakeMode(std::nullopt), [&] { return !app.awake->activeUntil(); }, "no timer"},
           {PanelAction::setOpenAtLogin(true), [&] { return app.loginItem->isEnabled(); }, "open at login"},
           {PanelAction::setOpenAtLogin(false), [&] { return !app.loginItem->isRegistered(); }, "not at login"},
           {PanelAction::openLoginItemsSettings(), [&] { return settingsOpened == 1; }, "the Login Items pane"},
           {PanelAction::revealApplicationsFolder(), [&] { return applicationsShown == 1; }, "Applications"}}) {
    run(action);
    EXPECT_TRUE(done()) << what;
  }
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

// Changed elsewhere meanwhile, and no timer has fired.
TEST_F(PanelActionTest, OpeningThePanelRefreshesLoginSessionLeaseAndLid) {
  app.turnOnDeepwake(600);
  app.heatWarning->acknowledged = false;
  app.loginItemService->setState(LoginItemState::requiresApproval);
  app.clocks.pass(601);
  run(AwakePanelContent::onOpen());
  EXPECT_TRUE(app.loginItem->needsApproval());
  EXPECT_FALSE(app.lid->isOn());
  EXPECT_FALSE(app.lid->hasAcknowledgedHeatWarning());
}

}  // namespace
}  // namespace wakeloft
