// wakeloft:// addresses followed by the app's own controllers.

#include "ui/AutomationHandler.h"

#include <gtest/gtest.h>

#include "TestControllers.h"
#include "lid/LidSleepBlockerError.h"
#include "ui/AwakePanelContent.h"

namespace wakeloft {
namespace {

// What the app told the commands.
struct RecordedOutcomes final : AutomationOutcomePublisher {
  std::vector<AutomationOutcome> published;
  void publish(const AutomationOutcome& outcome) override { published.push_back(outcome); }
};

class AutomationHandlerTest : public ::testing::Test {
 protected:
  void SetUp() override {
    app.processes->start(4242, 7, "make");
    app.start();
    handler = std::make_unique<AutomationHandler>(
        app.controllers(), [this] { ++panelShown; }, [this](const std::string& line) { logged.push_back(line); },
        outcomes);
  }
  void open(const std::string& address) { handler->open(address); }
  AutomationOutcome lastOutcome() const {
    EXPECT_FALSE(outcomes->published.empty());
    return outcomes->published.empty() ? AutomationOutcome{} : outcomes->published.back();
  }

  testing::TestControllers app;
  std::shared_ptr<RecordedOutcomes> outcomes = std::make_shared<RecordedOutcomes>();
  std::unique_ptr<AutomationHandler> handler;
  int panelShown = 0;
  std::vector<std::string> logged;
};

TEST_F(AutomationHandlerTest, AddressesDoWhatThePanelsControlsDo) {
  open("wakeloft://start?for=90m");
  EXPECT_EQ(app.awake->activeUntil(), app.clocks.now().adding(5400));
  open("wakeloft://toggle");
  EXPECT_FALSE(app.awake->isOn());
}

TEST_F(AutomationHandlerTest, StopEndsDeepwakeAndTheSessionAtOnce) {
  app.turnOnDeepwake();
  open("wakeloft://stop");
  EXPECT_FALSE(app.lid->isOn());
  EXPECT_FALSE(app.awake->isRequested());
}

TEST_F(AutomationHandlerTest, AHoldWithDeepwakeLastsUntilTheProcessEnds) {
  app.consent->answer(true);
  open("wakeloft://hold?pid=4242&for=1h&deepwake=1");
  EXPECT_EQ(app.awake->activeUntil(), app.clocks.now().adding(3600));
  EXPECT_TRUE(app.lid->isOn());
  app.processWatcher->end(4242);
  EXPECT_FALSE(app.awake->isOn());
}

TEST_F(AutomationHandlerTest, WhatCannotBeReadOrFollowedChangesNothingAndIsLogged) {
  app.awake->turnOn(1800);
  const auto until = app.awake->activeUntil();
  open("wakeloft://sleep");
  open("wakeloft://hold?pid=99");
  EXPECT_EQ(app.awake->activeUntil(), until);
  EXPECT_EQ(logged, (std::vector<std::string>{"wakeloft address not followed: unknown action \"sleep\"",
                                              "wakeloft address not followed: there is no process 99"}));
  EXPECT_EQ(panelShown, 0);
}

TEST_F(AutomationHandlerTest, EachAddressIsAnsweredUnderItsIdAndEachHoldLetGoOfIsTold) {
  using Kind = AutomationOutcome::Kind;
  open("wakeloft://hold?pid=99&id=a1");
  open("wakeloft://hold?pid=4242&id=b2");
  open("wakeloft://stop?id=c3");
  EXPECT_EQ(outcomes->published,
            (std::vector<AutomationOutcome>{{Kind::refused, "a1", 0, "there is no process 99"},
                                            {Kind::accepted, "b2", 0, ""},
                                            {Kind::released, "", 4242, "the session was turned off"},
                                            {Kind::accepted, "c3", 0, ""}}));
}

TEST_F(AutomationHandlerTest, DeepwakeThatCannotStartShowsThePanelAndIsRefusedButAProcessIsHeldAnyway) {
  app.consent->answer(true);
  app.heatWarning->acknowledged = false;
  app.lid->refresh();
  open("wakeloft://hold?pid=4242&deepwake=1");
  EXPECT_EQ(lastOutcome().reason,
            "the session is held, but Deepwake waits until its heat warning is read in Wakeloft's panel");
  EXPECT_EQ(panelShown, 1);
  EXPECT_EQ(app.binding->endingLast().size(), 1u);
}

TEST_F(AutomationHandlerTest, DeepwakePausedForPowerIsNoRefusalAndShowsNoPanel) {
  app.consent->answer(true);
  app.machine->current.isOnBattery = true;
  app.lid->setGuardrailSettings({.onlyOnPowerAdapter = true});
  open("wakeloft://hold?pid=4242&deepwake=1&id=p");
  EXPECT_EQ(lastOutcome(), (AutomationOutcome{AutomationOutcome::Kind::accepted, "p", 0, ""}));
  EXPECT_EQ(panelShown, 0);
}

bool panelAsks(const testing::TestControllers& app) {
  return AwakePanelContent::current(app.controllers(), "en_US", {14, 0, 0}).deepwake.automationQuestion.has_value();
}

TEST_F(AutomationHandlerTest, DeepwakeFromAScriptAsksFirstAndAllowingCarriesTheRequestOut) {
  open("wakeloft://deepwake?on=1");
  EXPECT_EQ(lastOutcome().reason,
            "Deepwake waits until scripts and Shortcuts are allowed to turn it on, in Wakeloft's panel");
  EXPECT_EQ(panelShown, 1);
  EXPECT_TRUE(panelAsks(app));

  perform(PanelAction::answerDeepwakeAutomation(true), app.controllers(), nullptr);
  EXPECT_TRUE(app.lid->isOn());
}

// Each in turn, on top of the one before. Only a refused mode is the
// panel's to show; the scripts' own refusals are not.
TEST_F(AutomationHandlerTest, DeepwakeRefusedByARuleOrAProfileIsRefusedWithItsReason) {
  for (const auto& [rule, reason, panels] : std::vector<std::tuple<std::function<void()>, std::string, int>>{
           {[&] {
              app.consent->answer(true);
              app.guardrails->deepwakeAllowed = false;
              app.lid->refresh();
            },
            "your organization does not allow Deepwake on this Mac", 1},
           {[&] { app.consent->answer(false); },
            "scripts and Shortcuts may not turn on Deepwake; that is a switch in Wakeloft's Safety settings", 1},
           {[&] { app.defaults.force(DeepwakeAutomationConsent::key, false); },
            "your organization does not let scripts and Shortcuts turn on Deepwake", 1}}) {
    rule();
    open("wakeloft://deepwake?on=1");
    EXPECT_EQ(lastOutcome().reason, reason);
    EXPECT_EQ(panelShown, panels) << reason;
  }
}

TEST_F(AutomationHandlerTest, TurningDeepwakeOffFromAScriptNeverAsks) {
  app.turnOnDeepwake();
  open("wakeloft://deepwake?on=0");
  EXPECT_FALSE(app.lid->isWanted());
  EXPECT_FALSE(panelAsks(app));
}

TEST_F(AutomationHandlerTest, AHoldGoneBeforeTheAnswerTakesItsDeepwakeRequestWithIt) {
  open("wakeloft://hold?pid=4242&deepwake=1");
  app.processWatcher->end(4242);
  perform(PanelAction::answerDeepwakeAutomation(true), app.controllers(), nullptr);
  EXPECT_FALSE(app.lid->isWanted());
}

}  // namespace
}  // namespace wakeloft
