#include "ui/ManagedSettings.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>

#include "TestAutomaticSessions.h"
#include "TestControllers.h"
#include "support/FakeLidHelperRegistration.h"

namespace wakeloft {
namespace {

class ProfileChanges final : public ManagedPreferencesNotifier {
 public:
  void observe(std::function<void()> handler) override { handler_ = std::move(handler); }
  void arrive() { handler_(); }

 private:
  std::function<void()> handler_;
};

class ManagedSettingsTest : public ::testing::Test {
 protected:
  void SetUp() override { app.start(); }
  std::unique_ptr<ManagedSettings> follow() {
    return std::make_unique<ManagedSettings>(app.controllers(), registration, changes, [this] { ++toldUnregistered; });
  }

  testing::TestControllers app;
  std::shared_ptr<testing::FakeLidHelperRegistration> registration = std::make_shared<testing::FakeLidHelperRegistration>();
  std::shared_ptr<ProfileChanges> changes = std::make_shared<ProfileChanges>();
  int toldUnregistered = 0;
};

TEST_F(ManagedSettingsTest, AProfileForbiddingDeepwakeWhileItRunsEndsItAndUnregistersTheHelper) {
  auto managed = follow();
  app.turnOnDeepwake();
  ASSERT_TRUE(app.lid->isOn());

  app.guardrails->deepwakeAllowed = false;
  changes->arrive();
  EXPECT_FALSE(app.lid->isWanted());
  EXPECT_EQ(registration->current, LidHelperStatus::notRegistered);
  EXPECT_EQ(toldUnregistered, 1);
}

TEST_F(ManagedSettingsTest, TheHelperIsUnregisteredOnlyWhileDeepwakeIsForbiddenAndOnlyWhenRegistered) {
  struct Case {
    bool allowed;
    LidHelperStatus status;
    int unregistrations;
  };
  for (const auto& [allowed, status, unregistrations] : {
           Case{true, LidHelperStatus::enabled, 0},
           Case{false, LidHelperStatus::enabled, 1},
           Case{false, LidHelperStatus::requiresApproval, 1},
           Case{false, LidHelperStatus::notRegistered, 0},
           Case{false, LidHelperStatus::notFound, 0},
       }) {
    registration = std::make_shared<testing::FakeLidHelperRegistration>();
    registration->current = status;
    app.guardrails->deepwakeAllowed = allowed;
    auto managed = follow();  // at launch
    EXPECT_EQ(registration->unregistrations, unregistrations)
        << "allowed " << allowed << ", status " << static_cast<int>(status);
  }
}

TEST_F(ManagedSettingsTest, AFailedUnregistrationIsTriedAgainOnTheNextChange) {
  app.guardrails->deepwakeAllowed = false;
  registration->unregistrationError = std::make_exception_ptr(std::runtime_error("launchd did not answer"));
  auto managed = follow();
  registration->unregistrationError = nullptr;
  changes->arrive();
  EXPECT_EQ(registration->unregistrations, 2);
  EXPECT_EQ(toldUnregistered, 1);
}

TEST_F(ManagedSettingsTest, AForcedAnswerForScriptsIsReadWhenTheProfileArrives) {
  auto managed = follow();
  app.defaults.force(DeepwakeAutomationConsent::key, true);
  changes->arrive();
  EXPECT_TRUE(app.consent->isForced());
  EXPECT_EQ(app.consent->answer(), DeepwakeAutomationConsent::Answer::allowed);
}

TEST(ManagedSettingsAutomaticTest, RulesAProfileFixesAreReadWhenItArrives) {
  testing::TestAutomaticSessions sessions;
  sessions.start();
  auto controllers = sessions.app.controllers();
  controllers.automatic = sessions.automatic;
  auto changes = std::make_shared<ProfileChanges>();
  ManagedSettings managed(controllers, std::make_shared<testing::FakeLidHelperRegistration>(), changes);
  sessions.store->rulesForced = true;
  changes->arrive();
  EXPECT_TRUE(sessions.automatic->areRulesForced());
}

}  // namespace
}  // namespace wakeloft
