#include "ui/AwakePanelContent.h"

#include <gtest/gtest.h>

#include <tuple>

#include <cstdint>

#include "TestControllers.h"
#include "lid/LidSleepBlockerError.h"
#include "ui/TextCatalog.h"

namespace wakeloft {
namespace {

using testing::TestControllers;

constexpr OperatingSystemVersion sonoma{14, 6, 1};
constexpr OperatingSystemVersion sequoia{15, 0, 0};

class AwakePanelContentTest : public ::testing::Test {
 protected:
  AwakePanelContent content(const OperatingSystemVersion& system = sonoma) {
    return AwakePanelContent::current(app.controllers(), "en_US", system);
  }

  TestControllers app;
};

PanelNote errorNote(LocalizedText text) { return {NoteSymbol::error, std::move(text)}; }

// --- Awake mode ---

TEST_F(AwakePanelContentTest, IdleOffersTurnOnAndTheStarredPresets) {
  app.start();
  const auto panel = content();
  EXPECT_EQ(panel.header.glyph, AwakeGlyph(AwakeGlyph::Vessel::mug, false));
  EXPECT_EQ(panel.header.spokenStatus.english(), "Wakeloft, off");
  EXPECT_EQ(panel.explanation.english(), "Your Mac can sleep as usual.");
  EXPECT_EQ(panel.mainButton, (PanelButton{TextCatalog::turnOn, PanelAction::toggleAwakeMode()}));

  EXPECT_EQ(panel.sessionControls.shown, AwakeSessionControls::presets);
  EXPECT_EQ(panel.sessionControls.presetsCaption, LocalizedText(TextCatalog::stayAwakeFor));
  ASSERT_EQ(panel.sessionControls.presets.size(), 3u);
  EXPECT_EQ(panel.sessionControls.presets[0].title.english(), "30m");
  EXPECT_EQ(panel.sessionControls.presets[0].accessibilityLabel, LocalizedText::verbatim("30 minutes"));
  EXPECT_EQ(panel.sessionControls.presets[0].action, PanelAction::turnOnAwakeMode(AwakeDuration{1800}));

  EXPECT_FALSE(panel.deepwake.toggle.isOn);
  EXPECT_TRUE(panel.deepwake.toggle.isEnabled);
  EXPECT_EQ(panel.deepwake.toggle.accessibilityHelp, panel.deepwake.caption);
  EXPECT_EQ(panel.retry, AwakePanelContent::Retry{});
}

TEST_F(AwakePanelContentTest, AwakeWithoutTimerKeepsThePresetsOrNothingWhenNoneIsStarred) {
  app.presetStore->stored = std::vector<double>{};
  app.start();
  EXPECT_TRUE(content().sessionControls.isEmpty());
  EXPECT_EQ(content().sessionControls.presetsCaption, std::nullopt);
  app.presets->pin({AwakeDuration{14400}});
  app.awake->turnOn(std::nullopt);
  const auto panel = content();
  EXPECT_EQ(panel.header.spokenStatus.english(), "Wakeloft, on");
  EXPECT_EQ(panel.statusLine.english(), "On");
  EXPECT_EQ(panel.explanation.english(),
            "Your Mac won't fall asleep on its own. Closing the lid still puts it to sleep.");
  ASSERT_EQ(panel.sessionControls.presets.size(), 1u);
  EXPECT_EQ(panel.sessionControls.presets[0].title.english(), "4h");
}

TEST_F(AwakePanelContentTest, ATimedSessionCountsDownAndOffersToDropTheTimer) {
  app.start();
  app.awake->turnOn(1530);
  auto panel = content();
  EXPECT_EQ(panel.statusLine.english(), "On \u00B7 25:30 left");
  EXPECT_EQ(panel.header.spokenStatus.english(), "Wakeloft, on, 25 minutes left");
  EXPECT_EQ(panel.sessionControls.shown, AwakeSessionControls::cancelTimer);
  EXPECT_EQ(panel.sessionControls.cancelTimer,
            (PanelButton{TextCatalog::stayAwakeWithoutTimer, PanelAction::turnOnAwakeMode(std::nullopt)}));
  EXPECT_TRUE(panel.sessionControls.presets.empty());

  app.clocks.pass(AwakePanelContent::statusRedrawInterval);
  EXPECT_EQ(content().statusLine.english(), "On \u00B7 25:29 left");

  app.clocks.pass(1500);
  panel = content();
  EXPECT_EQ(panel.statusLine.english(), "On \u00B7 0:29 left");
  EXPECT_EQ(panel.header.spokenStatus.english(), "Wakeloft, on, less than a minute left");
}

TEST_F(AwakePanelContentTest, ASessionBoundToAProcessNamesItOnScreenAndToVoiceOver) {
  app.processes->start(4242, 7, "make");
  app.start();
  // The length held for, the time passing, the status line and VoiceOver's.
  for (const auto& [seconds, passing, status, spoken] :
       std::vector<std::tuple<std::optional<double>, double, std::string, std::string>>{
           {std::nullopt, 0, "On \u00B7 until \u201Cmake\u201D ends", "Wakeloft, on, until \u201Cmake\u201D ends"},
           {1530, 0, "On \u00B7 25:30 left or until \u201Cmake\u201D ends",
            "Wakeloft, on, 25 minutes left or until \u201Cmake\u201D ends"},
           {1530, 1500, "On \u00B7 0:30 left or until \u201Cmake\u201D ends",
            "Wakeloft, on, less than a minute left or until \u201Cmake\u201D ends"}}) {
    app.binding->hold(4242, seconds);
    app.clocks.pass(passing);
    EXPECT_EQ(content().statusLine.english(), status);
    EXPECT_EQ(content().header.spokenStatus.english(), spoken);
  }
  app.processWatcher->end(4242);
  EXPECT_EQ(content().statusLine.english(), "Off");
}

TEST_F(AwakePanelContentTest, ASessionRefusedAtLaunchOffersTurnOnTheFailureAndNoRetry) {
  app.intents->stored = StoredAwakeIntent::intent(AwakeIntent::indefinite());
  app.assertion->nextRefusal = -536870199;
  app.start();
  const auto panel = content();
  EXPECT_EQ(panel.retry.dontRetry, (PanelButton{TextCatalog::dontRetry, PanelAction::stopRetrying()}));
  ASSERT_TRUE(panel.retry.failure);
  EXPECT_EQ(panel.retry.failure->text.english(), "macOS couldn't keep your Mac awake (IOKit error -536870199).");
}

// --- Deepwake ---

TEST_F(AwakePanelContentTest, DeepwakeIsShownOnOnlyOnceTheHelperConfirms) {
  app.start();
  app.helper->holdsReplies = true;
  app.lid->turnOnJoiningSessionOr(7200);
  ASSERT_TRUE(app.lid->isTurningOn());
  auto panel = content();
  EXPECT_FALSE(panel.deepwake.toggle.isOn);
  EXPECT_EQ(panel.header.glyph, AwakeGlyph(AwakeGlyph::Vessel::mug, true));
  EXPECT_EQ(panel.explanation, LocalizedText(TextCatalog::awakeUntilSessionEnds));

  // Confirmed: the lid-closed glyph and wording.
  app.helper->answerAll();
  panel = content();
  EXPECT_TRUE(panel.deepwake.toggle.isOn);
  EXPECT_EQ(panel.deepwake.toggle.action(false), PanelAction::setDeepwake(false));
  EXPECT_EQ(panel.header.glyph, AwakeGlyph(AwakeGlyph::Vessel::doubleMug, true));
  EXPECT_EQ(panel.explanation.english(), "Your Mac won't fall asleep until the session ends, even with the lid closed.");

  app.awake->turnOn(std::nullopt);
  panel = content();
  EXPECT_EQ(panel.explanation.english(), "Your Mac won't fall asleep, even with the lid closed.");
}

TEST_F(AwakePanelContentTest, AFailingHelperOrAnUnconfirmedResetIsExplainedUnderTheSwitch) {
  app.start();
  app.helper->nextRenewalError = std::make_exception_ptr(
      LidSleepBlockerError::helperRefused(LidHelperRefusal::settingOnElsewhere().reason()));
  app.lid->turnOnJoiningSessionOr(7200);
  const auto panel = content();
  EXPECT_FALSE(panel.deepwake.toggle.isOn);
  EXPECT_EQ(panel.deepwake.failure, errorNote(TextCatalog::settingOnElsewhere));
  EXPECT_EQ(panel.retry.failure, std::nullopt);  // the awake session itself runs

  // An unconfirmed reset warns that the Mac may stay awake.
  app.turnOnDeepwake();
  app.helper->nextRevocationError = std::make_exception_ptr(
      LidSleepBlockerError::helperRefused(LidHelperRefusal::settingNotPutBack("pmset failed").reason()));
  app.lid->turnOff();
  const auto reset = content();
  ASSERT_TRUE(reset.deepwake.failure);
  EXPECT_EQ(reset.deepwake.failure->text.english(),
            "Your Mac may stay awake with the lid closed. Deepwake's helper couldn't restore the sleep setting and "
            "is still trying (pmset failed).");
}

TEST_F(AwakePanelContentTest, TheHeatWarningShowsBeforeItIsAcknowledgedAndOnBatteryWithNoDisplayWhileOn) {
  app.heatWarning->acknowledged = false;
  app.machine->current = {.isOnBattery = true, .hasExternalDisplay = false};
  app.start();
  const auto panel = content();
  EXPECT_FALSE(panel.deepwake.toggle.isEnabled);
  ASSERT_TRUE(panel.deepwake.precaution);
  EXPECT_EQ(panel.deepwake.precaution->symbol, NoteSymbol::heat);
  EXPECT_EQ(panel.deepwake.precaution->text.english(),
            "With the lid shut and no display attached, heat can build up. Keep your Mac out of bags and other "
            "enclosed spaces while it is working.");
  ASSERT_TRUE(panel.deepwake.precaution->link);
  EXPECT_EQ(panel.deepwake.precaution->link->action, PanelAction::acknowledgeHeatWarning());

  app.lid->acknowledgeHeatWarning();
  EXPECT_EQ(content().deepwake.precaution, std::nullopt);  // only while Deepwake runs
  app.turnOnDeepwake();
  const auto on = content();
  ASSERT_TRUE(on.deepwake.precaution);
  EXPECT_EQ(on.deepwake.precaution->text.english(),
            "On battery with no display attached. Keep your Mac uncovered so heat can escape.");
  EXPECT_EQ(on.deepwake.precaution->link, std::nullopt);
}

TEST_F(AwakePanelContentTest, TheActiveGuardrailShowsUnderTheSwitchAndWhatEndsOrPausesItIsSaid) {
  app.machine->current = {.isOnBattery = true, .hasExternalDisplay = true, .batteryCharge = 64};
  app.start();
  app.turnOnDeepwake();
  auto panel = content();
  EXPECT_EQ(panel.deepwake.guardrail->text.english(), "On battery at 64%. Deepwake stops at 20%.");
  EXPECT_EQ(panel.header.spokenNote, std::nullopt);  // the charge is only there to see

  app.machine->current.batteryCharge = 20;
  app.conditionsNotifier->post();
  panel = content();
  EXPECT_FALSE(panel.deepwake.toggle.isOn);
  EXPECT_EQ(panel.deepwake.guardrail,
            (PanelNote{NoteSymbol::information, {TextCatalog::stoppedAtBatteryFloor, {std::string("20%")}}}));
  EXPECT_EQ(panel.header.spokenLabel(nullptr),
            "Wakeloft, on, 2 hours left. Deepwake stopped because the battery fell to 20%.");

  // Paused for power: the switch keeps the user's wish.
  app.machine->current.batteryCharge = 90;
  app.lid->setGuardrailSettings({.onlyOnPowerAdapter = true});
  app.turnOnDeepwake();
  panel = content();
  EXPECT_TRUE(panel.deepwake.toggle.isOn);
  EXPECT_EQ(panel.deepwake.guardrail->text, LocalizedText(TextCatalog::pausedWaitingForPower));
  EXPECT_EQ(panel.header.spokenNote, LocalizedText(TextCatalog::pausedWaitingForPower));
}

TEST_F(AwakePanelContentTest, OnlyATranslocatedCopyIsToldToMoveToApplicationsWithTheSwitchDisabled) {
  app.start();
  EXPECT_EQ(content().deepwake.location, std::nullopt);
  app.translocated = true;
  app.start();
  const auto panel = content();
  EXPECT_FALSE(panel.deepwake.toggle.isEnabled);
  EXPECT_EQ(panel.deepwake.location,
            (PanelNote{NoteSymbol::information, TextCatalog::runsTranslocated,
                       PanelButton{TextCatalog::showApplicationsFolder, PanelAction::revealApplicationsFolder()}}));
}

// --- Open at login ---

TEST_F(AwakePanelContentTest, ALoginItemAwaitingApprovalLinksToTheSystemsPaneOneOutsideApplicationsIsToldToMoveAndARefusalShowsTheSystemsWords) {
  app.loginItemService->setState(LoginItemState::requiresApproval);
  app.start();
  auto panel = content(sonoma);
  EXPECT_TRUE(panel.login.toggle.isOn);
  ASSERT_TRUE(panel.login.approval);
  EXPECT_EQ(panel.login.approval->text.english(), "Approve Wakeloft in System Settings.");
  ASSERT_TRUE(panel.login.approval->link);
  EXPECT_EQ(panel.login.approval->link->title.english(), "Open Login Items\u2026");
  EXPECT_EQ(panel.login.approval->link->action, PanelAction::openLoginItemsSettings());

  panel = content(sequoia);
  EXPECT_EQ(panel.login.approval->link->title.english(), "Open Login Items & Extensions\u2026");

  app.loginItemService = std::make_shared<InMemoryLoginItem>(LoginItemState::enabled, /*isAtStableLocation=*/false);
  app.start();
  panel = content();
  EXPECT_TRUE(panel.login.toggle.isOn);
  ASSERT_TRUE(panel.login.location);
  EXPECT_EQ(panel.login.location->text.english(),
            "Wakeloft isn't in Applications, so it may not open at your next login. Move it to Applications, then "
            "turn this back on.");

  app.loginItem->setEnabled(false);
  EXPECT_EQ(content().login.location, std::nullopt);  // nothing to warn about while off

  app.loginItemService->nextRegistrationError = std::make_exception_ptr(std::runtime_error("Operation not permitted"));
  app.loginItem->setEnabled(true);
  panel = content();
  EXPECT_FALSE(panel.login.toggle.isOn);
  EXPECT_EQ(panel.login.failure, errorNote(LocalizedText::verbatim("Operation not permitted")));
}

}  // namespace
}  // namespace wakeloft
