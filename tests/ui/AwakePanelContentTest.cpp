#include "ui/AwakePanelContent.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "TestControllers.h"
#include "lid/LidSleepBlockerError.h"
#include "session/InMemoryScreenLockNotifier.h"
#include "session/InMemoryScreenOnStore.h"
#include "ui/TextCatalog.h"

namespace wakeloft {
namespace {

using Status = std::pair<std::string, std::string>;

class AwakePanelContentTest : public ::testing::Test {
 protected:
  void SetUp() override { app.start(); }
  AwakePanelContent content(const OperatingSystemVersion& system = {14, 6, 1}) {
    return AwakePanelContent::current(app.controllers(), "en_US", system);
  }
  // The status line, and what VoiceOver reads for it.
  Status status() {
    const auto panel = content();
    return {panel.statusLine.english(), panel.header.spokenStatus.english()};
  }

  testing::TestControllers app;
};

PanelNote errorNote(LocalizedText text) { return {NoteSymbol::error, std::move(text)}; }

TEST_F(AwakePanelContentTest, IdleOffersTurnOnAndEachStarredPresetInSpokenWords) {
  const auto panel = content();
  EXPECT_EQ(panel.mainButton, (PanelButton{TextCatalog::turnOn, PanelAction::toggleAwakeMode()}));
  EXPECT_EQ(panel.explanation, LocalizedText(TextCatalog::sleepsNormally));
  ASSERT_EQ(panel.sessionControls.presets.size(), 3u);
  EXPECT_EQ(panel.sessionControls.presets[0].accessibilityLabel, LocalizedText::verbatim("30 minutes"));
  EXPECT_EQ(panel.sessionControls.presets[0].action, PanelAction::turnOnAwakeMode(AwakeDuration{1800}));
}

TEST_F(AwakePanelContentTest, ATimedSessionOffersToDropTheTimerInsteadOfThePresets) {
  app.awake->turnOn(1530);
  const auto panel = content();
  EXPECT_EQ(panel.sessionControls.cancelTimer,
            (PanelButton{TextCatalog::stayAwakeWithoutTimer, PanelAction::turnOnAwakeMode(std::nullopt)}));
  EXPECT_TRUE(panel.sessionControls.presets.empty());
  EXPECT_EQ(panel.explanation, LocalizedText(TextCatalog::awakeUntilSessionEnds));
}

// Step by step; the time left in minutes to VoiceOver, a process held for by
// its name, several by their count.
TEST_F(AwakePanelContentTest, TheStatusSaysForHowLongAndForWhatTheMacIsKeptAwake) {
  app.processes->start(4242, 7, "make");
  app.processes->start(4243, 8, "xcodebuild");
  app.start();
  for (const auto& [step, line, spoken] : std::vector<std::tuple<std::function<void()>, std::string, std::string>>{
           {[] {}, "Off", "Wakeloft, off"},
           {[&] { app.awake->turnOn(std::nullopt); }, "On", "Wakeloft, on"},
           {[&] { app.awake->turnOn(1530); }, "On \u00B7 25:30 left", "Wakeloft, on, 25 minutes left"},
           {[&] { app.clocks.pass(1501); }, "On \u00B7 0:29 left", "Wakeloft, on, less than a minute left"},
           {[&] { app.binding->hold(4242, std::nullopt); }, "On \u00B7 until \u201Cmake\u201D ends",
            "Wakeloft, on, until \u201Cmake\u201D ends"},
           {[&] { app.binding->hold(4242, 1530); }, "On \u00B7 25:30 left or until \u201Cmake\u201D ends",
            "Wakeloft, on, 25 minutes left or until \u201Cmake\u201D ends"},
           {[&] { app.binding->hold(4243, std::nullopt); }, "On \u00B7 until 2 processes end",
            "Wakeloft, on, until 2 processes end"}}) {
    step();
    EXPECT_EQ(status(), Status(line, spoken));
  }
}

TEST_F(AwakePanelContentTest, ASessionRefusedAtLaunchOffersToStopRetryingAndSaysWhy) {
  app.intents->stored = StoredAwakeIntent::intent(AwakeIntent::indefinite());
  app.assertion->nextRefusal = -536870199;
  app.start();
  const auto panel = content();
  EXPECT_EQ(panel.retry.dontRetry, (PanelButton{TextCatalog::dontRetry, PanelAction::stopRetrying()}));
  EXPECT_EQ(panel.retry.failure, errorNote({TextCatalog::assertionRefused, {std::int32_t{-536870199}}}));
}

TEST_F(AwakePanelContentTest, DeepwakeIsShownOnOnlyOnceTheHelperConfirms) {
  app.helper->holdsReplies = true;
  app.lid->turnOnJoiningSessionOr(7200);
  EXPECT_FALSE(content().deepwake.toggle.isOn);
  app.helper->answerAll();
  EXPECT_TRUE(content().deepwake.toggle.isOn);
}

TEST_F(AwakePanelContentTest, TheHelpersRefusalIsExplainedUnderTheSwitchNotAsTheSessionsFailure) {
  app.helper->nextRenewalError =
      std::make_exception_ptr(LidSleepBlockerError::helperRefused(LidHelperRefusal::settingOnElsewhere().reason()));
  app.lid->turnOnJoiningSessionOr(7200);
  const auto panel = content();
  EXPECT_EQ(panel.deepwake.failure, errorNote(TextCatalog::settingOnElsewhere));
  EXPECT_EQ(panel.retry.failure, std::nullopt);
}

TEST_F(AwakePanelContentTest, TheHeatWarningShowsUntilAcknowledgedThenOnBatteryWithNoDisplayWhileOn) {
  app.heatWarning->acknowledged = false;
  app.machine->current = {.isOnBattery = true, .hasExternalDisplay = false};
  app.start();
  const auto warning = content().deepwake.precaution;
  ASSERT_TRUE(warning && warning->link);
  EXPECT_EQ(warning->link->action, PanelAction::acknowledgeHeatWarning());

  app.lid->acknowledgeHeatWarning();
  EXPECT_EQ(content().deepwake.precaution, std::nullopt);
  app.turnOnDeepwake();
  EXPECT_EQ(content().deepwake.precaution, (PanelNote{NoteSymbol::heat, TextCatalog::noHeatPath}));
}

TEST_F(AwakePanelContentTest, TheBatteryGuardrailIsShownButWhatEndedDeepwakeIsAlsoSaid) {
  app.machine->current = {.isOnBattery = true, .hasExternalDisplay = true, .batteryCharge = 64};
  app.start();
  app.turnOnDeepwake();
  auto panel = content();
  ASSERT_TRUE(panel.deepwake.guardrail);
  EXPECT_EQ(panel.deepwake.guardrail->text.english(), "On battery at 64%. Deepwake stops at 20%.");
  EXPECT_EQ(panel.header.spokenNote, std::nullopt);

  app.machine->current.batteryCharge = 20;
  app.conditionsNotifier->post();
  EXPECT_EQ(content().header.spokenLabel(nullptr),
            "Wakeloft, on, 2 hours left. Deepwake stopped because the battery fell to 20%.");
}

TEST_F(AwakePanelContentTest, TheScreenSwitchKeepsTheScreenOnAndARefusalShowsItsCode) {
  auto controllers = app.controllers();
  auto display = std::make_shared<InMemorySleepBlocker>();
  display->nextRefusal = -536870201;
  controllers.screenOn = std::make_shared<ScreenOnController>(
      app.awake, display, std::make_shared<InMemoryScreenOnStore>(), app.machine,
      std::make_shared<testing::ManualConditionsNotifier>(),
      std::make_shared<ScreenLockState>(std::make_shared<InMemoryScreenLockNotifier>()),
      std::make_shared<testing::ManualRecheckNotifier>());
  app.awake->turnOn(std::nullopt);
  const auto before = AwakePanelContent::current(controllers, "en_US", {14, 0, 0}).screenOn;
  ASSERT_TRUE(before && !before->toggle.isOn);
  perform(before->toggle.action(true), controllers, nullptr);
  const auto after = AwakePanelContent::current(controllers, "en_US", {14, 0, 0}).screenOn;
  ASSERT_TRUE(after && after->toggle.isOn && after->failure);
  EXPECT_EQ(after->failure->text, LocalizedText(TextCatalog::screenOnRefused, {std::int32_t{-536870201}}));
}

TEST_F(AwakePanelContentTest, ARefusedLoginItemShowsTheSystemsWordsWithTheSwitchOff) {
  app.loginItemService->nextRegistrationError = std::make_exception_ptr(std::runtime_error("Operation not permitted"));
  app.loginItem->setEnabled(true);
  const auto panel = content();
  EXPECT_FALSE(panel.login.toggle.isOn);
  EXPECT_EQ(panel.login.failure, errorNote(LocalizedText::verbatim("Operation not permitted")));
}

}  // namespace
}  // namespace wakeloft
