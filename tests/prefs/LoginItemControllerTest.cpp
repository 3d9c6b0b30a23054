#include "prefs/LoginItemController.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "prefs/InMemoryLoginItem.h"

namespace wakeloft {
namespace {

const AwakeFailure refused = AwakeFailure::Reported{"Operation not permitted"};

std::exception_ptr refusal() { return std::make_exception_ptr(std::runtime_error("Operation not permitted")); }

class LoginItemControllerTest : public ::testing::Test {
 protected:
  std::unique_ptr<LoginItemController> make(LoginItemState state, bool repairing = false, bool stable = true) {
    item = std::make_shared<InMemoryLoginItem>(state, stable);
    auto controller = std::make_unique<LoginItemController>(item, repairing);
    subscription = controller->observe([this] { ++changes; });
    return controller;
  }

  std::shared_ptr<InMemoryLoginItem> item;
  Subscription subscription;
  int changes = 0;
};

TEST_F(LoginItemControllerTest, SwitchingOnAndOffFollowsTheSystemWhereWaitingForApprovalIsRegisteredButNotEnabled) {
  auto controller = make(LoginItemState::disabled);
  EXPECT_FALSE(controller->isEnabled());
  EXPECT_FALSE(controller->isRegistered());

  controller->setEnabled(true);
  EXPECT_EQ(item->registerCount, 1);
  EXPECT_EQ(controller->state(), LoginItemState::enabled);
  EXPECT_TRUE(controller->isEnabled());
  EXPECT_EQ(changes, 1);

  controller->setEnabled(false);
  EXPECT_EQ(item->unregisterCount, 1);
  EXPECT_EQ(controller->state(), LoginItemState::disabled);
  EXPECT_EQ(changes, 2);


  controller = make(LoginItemState::disabled);
  item->stateAfterRegistering = LoginItemState::requiresApproval;
  controller->setEnabled(true);
  EXPECT_FALSE(controller->isEnabled());
  EXPECT_TRUE(controller->isRegistered());
  EXPECT_TRUE(controller->needsApproval());
  EXPECT_EQ(controller->lastFailure(), std::nullopt);

  // A toggle from there switches off.
  controller->toggle();
  EXPECT_EQ(item->unregisterCount, 1);
  EXPECT_EQ(controller->state(), LoginItemState::disabled);

  controller->toggle();
  EXPECT_EQ(item->registerCount, 2);
}

TEST_F(LoginItemControllerTest, AFailingRegistrationOrUnregistrationKeepsTheFailureAndTheSystemsState) {
  auto controller = make(LoginItemState::disabled);
  item->nextRegistrationError = refusal();
  controller->setEnabled(true);
  EXPECT_EQ(controller->lastFailure(), refused);
  EXPECT_EQ(controller->state(), LoginItemState::disabled);
  EXPECT_EQ(changes, 1);

  // The system may have changed something despite the error.
  item->nextRegistrationError = refusal();
  item->setState(LoginItemState::requiresApproval);
  controller->setEnabled(true);
  EXPECT_EQ(controller->state(), LoginItemState::requiresApproval);
  EXPECT_EQ(controller->lastFailure(), refused);

  // The next success clears it.
  controller->setEnabled(false);
  EXPECT_EQ(controller->lastFailure(), std::nullopt);
  EXPECT_EQ(controller->state(), LoginItemState::disabled);

  controller = make(LoginItemState::enabled);
  item->nextUnregistrationError = refusal();
  controller->toggle();
  EXPECT_EQ(controller->lastFailure(), refused);
  EXPECT_TRUE(controller->isEnabled());

  // A refresh clears the failure only when the state changed, as when the
  // user switched it off in the system settings.
  changes = 0;
  controller->refresh();
  EXPECT_EQ(controller->lastFailure(), refused);
  EXPECT_EQ(changes, 0);
  item->setState(LoginItemState::disabled);
  controller->refresh();
  EXPECT_EQ(controller->state(), LoginItemState::disabled);
  EXPECT_EQ(controller->lastFailure(), std::nullopt);
  EXPECT_GE(changes, 1);
}

TEST_F(LoginItemControllerTest, StartingRepairsOnlyAnEnabledItemAtAStableLocationAndReportsARepairThatFailsOrEndsElsewhere) {
  make(LoginItemState::enabled, true);
  EXPECT_EQ(item->registerCount, 1);

  make(LoginItemState::enabled, false);
  EXPECT_EQ(item->registerCount, 0);
  make(LoginItemState::disabled, true);
  EXPECT_EQ(item->registerCount, 0);
  make(LoginItemState::requiresApproval, true);
  EXPECT_EQ(item->registerCount, 0);
  make(LoginItemState::enabled, true, false);
  EXPECT_EQ(item->registerCount, 0);

  auto shared = std::make_shared<InMemoryLoginItem>(LoginItemState::enabled, true);
  shared->nextRegistrationError = refusal();
  LoginItemController failed(shared, true);
  EXPECT_EQ(failed.lastFailure(), refused);
  EXPECT_EQ(failed.state(), LoginItemState::enabled);

  shared->stateAfterRegistering = LoginItemState::requiresApproval;
  LoginItemController moved(shared, true);
  EXPECT_EQ(moved.lastFailure(), std::nullopt);
  EXPECT_TRUE(moved.needsApproval());
}

}  // namespace
}  // namespace wakeloft
