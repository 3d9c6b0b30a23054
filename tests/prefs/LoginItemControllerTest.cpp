#include "prefs/LoginItemController.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <tuple>

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

TEST_F(LoginItemControllerTest, SwitchingOnAndOffRegistersWithTheSystemAndTellsObservers) {
  auto controller = make(LoginItemState::disabled);
  controller->setEnabled(true);
  EXPECT_EQ(item->registerCount, 1);
  EXPECT_TRUE(controller->isEnabled());
  EXPECT_EQ(changes, 1);
  controller->setEnabled(false);
  EXPECT_EQ(item->unregisterCount, 1);
  EXPECT_FALSE(controller->isEnabled());
  EXPECT_EQ(changes, 2);
}

TEST_F(LoginItemControllerTest, WaitingForApprovalIsRegisteredButNotEnabledAndAToggleSwitchesItOff) {
  auto controller = make(LoginItemState::disabled);
  item->stateAfterRegistering = LoginItemState::requiresApproval;
  controller->setEnabled(true);
  EXPECT_FALSE(controller->isEnabled());
  EXPECT_TRUE(controller->isRegistered());
  EXPECT_TRUE(controller->needsApproval());
  controller->toggle();
  EXPECT_EQ(item->unregisterCount, 1);
  EXPECT_EQ(controller->state(), LoginItemState::disabled);
}

TEST_F(LoginItemControllerTest, AFailureIsKeptWithTheSystemsStateUntilTheNextSuccess) {
  auto controller = make(LoginItemState::disabled);
  // The system may have changed something despite the error.
  item->nextRegistrationError = refusal();
  item->setState(LoginItemState::requiresApproval);
  controller->setEnabled(true);
  EXPECT_EQ(controller->lastFailure(), refused);
  EXPECT_EQ(controller->state(), LoginItemState::requiresApproval);
  controller->setEnabled(false);
  EXPECT_EQ(controller->lastFailure(), std::nullopt);
}

TEST_F(LoginItemControllerTest, StartingRepairsOnlyAnEnabledItemAtAStableLocation) {
  const std::tuple<LoginItemState, bool, bool, int> cases[] = {
      {LoginItemState::enabled, true, true, 1},  {LoginItemState::enabled, false, true, 0},
      {LoginItemState::disabled, true, true, 0}, {LoginItemState::requiresApproval, true, true, 0},
      {LoginItemState::enabled, true, false, 0},
  };
  for (const auto& [state, repairing, stable, registered] : cases) {
    make(state, repairing, stable);
    EXPECT_EQ(item->registerCount, registered) << static_cast<int>(state) << repairing << stable;
  }
}

TEST_F(LoginItemControllerTest, ARepairThatFailsOrEndsAwaitingApprovalIsReported) {
  auto shared = std::make_shared<InMemoryLoginItem>(LoginItemState::enabled, true);
  shared->nextRegistrationError = refusal();
  EXPECT_EQ(LoginItemController(shared, true).lastFailure(), refused);
  shared->stateAfterRegistering = LoginItemState::requiresApproval;
  EXPECT_TRUE(LoginItemController(shared, true).needsApproval());
}

}  // namespace
}  // namespace wakeloft
