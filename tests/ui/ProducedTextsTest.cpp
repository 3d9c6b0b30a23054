// Every catalog text is produced by some part of the interface, and only
// those: with the tables test this ties the tables to the code.

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "AutomaticApp.h"
#include "TestAutomaticSessions.h"
#include "TestControllers.h"
#include "session/InMemoryScreenLockNotifier.h"
#include "session/InMemoryScreenOnStore.h"
#include "ui/AutomaticPopupContent.h"
#include "ui/AwakePanelContent.h"
#include "ui/FailureText.h"
#include "ui/MenuBarItem.h"
#include "ui/AboutPopupContent.h"
#include "ui/QuitConfirmationAlert.h"
#include "ui/SafetyPopupContent.h"
#include "ui/SettingsMenu.h"
#include "ui/SettingsPopupContent.h"
#include "prefs/SystemTimeZone.h"
#include "ui/TextCatalog.h"

namespace wakeloft {
namespace {

// The catalog keys of what the parts show or say.
struct Keys {
  std::set<std::pair<std::string, TextTable>> found;

  void add(const LocalizedText& text) {
    if (text.key()) found.emplace(std::string(text.key()->key()), text.key()->table());
  }
  void add(const PanelButton& button) { add(button.title, button.accessibilityLabel); }
  void add(const PanelSwitch& toggle) { add(toggle.title, toggle.accessibilityHelp); }
  // The note's spoken form adds the error prefix.
  void add(const PanelNote& note) {
    note.spokenLabel([&](TextKey key) -> std::optional<std::string> {
      found.emplace(std::string(key.key()), key.table());
      return std::nullopt;
    });
    add(note.link);
  }
  template <typename T>
  void add(const std::optional<T>& value) {
    if (value) add(*value);
  }
  template <typename... T>
  requires(sizeof...(T) > 1) void add(const T&... values) { (add(values), ...); }
  template <typename T>
  void add(const std::vector<T>& values) {
    for (const auto& value : values) add(value);
  }

  void add(const AwakePanelContent& panel) {
    add(panel.header.title, panel.header.spokenStatus, panel.header.spokenNote, panel.statusLine, panel.explanation,
        panel.automaticPause);
    add(panel.mainButton, panel.sessionControls.cancelTimer, panel.sessionControls.presetsCaption,
        panel.sessionControls.presets);
    const auto& deepwake = panel.deepwake;
    add(deepwake.toggle, deepwake.caption, deepwake.precaution, deepwake.failure, deepwake.guardrail,
        deepwake.location);
    if (const auto& question = deepwake.automationQuestion) add(question->text, question->dontAllow, question->allow);
    add(panel.retry.dontRetry, panel.retry.failure, panel.login.toggle, panel.login.approval, panel.login.location,
        panel.login.failure);
    if (const auto& screenOn = panel.screenOn) add(screenOn->toggle, screenOn->failure);
  }
};

// The panel in every state that changes its words.
void addPanels(Keys& keys) {
  const auto shown = [&](testing::TestControllers& app, OperatingSystemVersion system = {14, 0, 0}) {
    keys.add(AwakePanelContent::current(app.controllers(), "en_US", system));
  };
  testing::TestControllers app;
  app.heatWarning->acknowledged = false;
  app.loginItemService->setState(LoginItemState::requiresApproval);
  app.loginItemService->setIsAtStableLocation(false);
  app.intents->stored = StoredAwakeIntent::intent(AwakeIntent::indefinite());
  app.assertion->nextRefusal = -1;
  app.processes->start(4242, 7, "make");
  app.processes->start(4243, 8, "xcodebuild");
  app.start();
  app.consent->request([] {});
  shown(app);
  shown(app, {15, 0, 0});
  app.lid->acknowledgeHeatWarning();
  app.awake->turnOn(std::nullopt);
  shown(app);
  app.awake->turnOn(3600);
  shown(app);
  // The screen kept on, and refused.
  auto withScreenOn = app.controllers();
  auto displayAssertion = std::make_shared<InMemorySleepBlocker>();
  displayAssertion->nextRefusal = -1;
  auto screenOnStore = std::make_shared<InMemoryScreenOnStore>();
  screenOnStore->setKeepsScreenOn(true);
  withScreenOn.screenOn = std::make_shared<ScreenOnController>(
      app.awake, displayAssertion, screenOnStore, app.machine, std::make_shared<testing::ManualConditionsNotifier>(),
      std::make_shared<ScreenLockState>(std::make_shared<InMemoryScreenLockNotifier>()),
      std::make_shared<testing::ManualRecheckNotifier>());
  keys.add(AwakePanelContent::current(withScreenOn, "en_US", {14, 0, 0}));
  app.clocks.pass(3570);
  shown(app);
  app.machine->current.isOnBattery = true;
  app.conditionsNotifier->post();
  app.awake->turnOn(std::nullopt);
  app.turnOnDeepwake();
  shown(app);
  app.awake->turnOn(600);
  shown(app);
  // Bound to one process, then two: without a timer, with one, in its last minute.
  for (const auto seconds : {std::optional<double>(), std::optional<double>(3600)}) {
    app.binding->hold(4242, seconds);
    shown(app);
    app.binding->hold(4243, seconds);
    shown(app);
  }
  app.clocks.pass(3570);
  shown(app);

  // Each guardrail's notice, each rule ending Deepwake and then refusing it.
  testing::TestControllers guarded;
  guarded.guardrails->setSettings({.stopsWhenLidOpens = true});
  guarded.machine->current = {.isOnBattery = true, .batteryCharge = 50, .isLidClosed = true};
  guarded.start();
  auto& machine = guarded.machine->current;
  const auto changed = [&] {
    guarded.conditionsNotifier->post();
    shown(guarded);
  };
  const auto stopAndRefuse = [&](const std::function<void()>& stop, const std::function<void()>& undo) {
    guarded.turnOnDeepwake();
    shown(guarded);
    stop();
    changed();
    guarded.turnOnDeepwake();
    shown(guarded);
    undo();
    changed();
  };
  stopAndRefuse([&] { machine.thermalState = ThermalState::serious; }, [] {});
  stopAndRefuse([&] { machine.thermalState = ThermalState::critical; }, [&] { machine.thermalState = {}; });
  stopAndRefuse([&] { machine.isLowPowerModeOn = true; }, [&] { machine.isLowPowerModeOn = false; });
  stopAndRefuse([&] { machine.batteryCharge = 10; }, [&] { machine.batteryCharge = 50; });
  stopAndRefuse([&] { machine.isLidClosed = false; }, [&] { machine.isLidClosed = true; });
  guarded.lid->setGuardrailSettings({.onlyOnPowerAdapter = true});
  guarded.turnOnDeepwake();
  shown(guarded);

  // Automatic sessions: each rule leading alone and with others, then paused;
  // the grace period.
  using enum testing::AutomaticApp::Fact;
  for (const int facts :
       {+display, +adapter, +xcode, +mondayMorning, display | xcode, adapter | xcode, xcode | mondayMorning}) {
    testing::AutomaticApp automatic;
    automatic.launch(facts);
    keys.add(automatic.panel());
    automatic.act(PanelAction::toggleAwakeMode());
    keys.add(automatic.panel());
  }
  testing::AutomaticApp grace;
  grace.launch(display);
  grace.machine->current.hasExternalDisplay = false;
  grace.postChanges();
  keys.add(grace.panel());

  testing::TestControllers translocated;
  translocated.translocated = true;
  translocated.start();
  shown(translocated);
}

Keys produced() {
  Keys keys;
  for (const AwakeFailure& failure :
       {AwakeFailure(AwakeFailure::AssertionRefused{-1}), AwakeFailure(AwakeFailure::LidHelperUnavailable{}),
        AwakeFailure(AwakeFailure::LidHelperRequiresApproval{})}) {
    keys.add(FailureText::describing(failure));
  }
  for (const auto& refusal : {LidHelperRefusal::settingUnreadable("d"), LidHelperRefusal::settingUnwritten("d"),
                              LidHelperRefusal::settingNotPutBack("d"), LidHelperRefusal::deadlineNotANumber(),
                              LidHelperRefusal::settingOnElsewhere(), LidHelperRefusal::settingTurnedOffElsewhere()}) {
    keys.add(FailureText::describing(refusal));
  }
  addPanels(keys);
  for (const bool timer : {false, true}) {
    for (const bool lid : {false, true}) keys.add(MenuBarItem::iconLabel({true, timer, lid}));
  }
  keys.add(MenuBarItem::iconLabel({}), MenuBarItem::iconLabel({.showsUpdateDot = true}), SettingsMenu::buttonTitle());
  for (const auto& waitingUpdate : {std::optional<std::string>(), std::optional<std::string>("2.1")}) {
    keys.add(SettingsMenu::buttonAccessibilityLabel(waitingUpdate));
    for (const auto& item : SettingsMenu::items(waitingUpdate)) keys.add(item.title);
  }
  testing::TestControllers app;
  app.start();
  const auto chooser = SettingsPopupContent::current(*app.presets, "en_US");
  keys.add(chooser.title, chooser.hint, chooser.rowHelp);
  for (const auto& row : chooser.rows) keys.add(row.label);
  const auto safety = SafetyPopupContent::current(*app.lid, "en_US", app.consent.get());
  keys.add(safety.title, safety.floorTitle, safety.floorHint, safety.heatNote, safety.managedNote);
  for (const auto& floor : safety.floors) keys.add(floor.label);
  auto rows = safety.switches;
  rows.push_back(*safety.automation);
  for (const auto& row : rows) keys.add(row.title, row.hint);
  testing::TestAutomaticSessions sessions;
  sessions.start();
  testing::ManualScreenLockSetting screenLock;
  using Bundle = AutomaticPopupContent::ChosenBundle;
  for (const auto& bundle : {Bundle{std::nullopt, "Tool", std::nullopt, "/Tool.app"},
                             Bundle{"com.example.a", "A", std::nullopt, "/A.app"},
                             Bundle{"com.example.b", "B\n", std::nullopt, "/B.app"}}) {
    keys.add(AutomaticPopupContent::addChosenApp(bundle, *sessions.automatic));
  }
  const auto automatic = AutomaticPopupContent::current(*sessions.automatic, "en_US", &screenLock);
  keys.add(automatic.title, automatic.noApps, automatic.addApp, automatic.startLabel, automatic.endLabel,
           automatic.combinationTitle, automatic.commandLineNote, automatic.stopWhenScreenLocks->title,
           automatic.stopWhenScreenLocks->hint);
  for (const auto& rule : automatic.rules) keys.add(rule.toggle.title, rule.toggle.hint);
  for (const auto& chosen : automatic.apps) keys.add(chosen.removeLabel);
  for (const auto& choice : automatic.combinations) keys.add(choice.label);
  auto full = sessions.automatic->settings();
  full.apps.resize(AutomaticRules::Settings::mostApps);
  for (std::size_t i = 0; i < full.apps.size(); ++i) full.apps[i] = {"com.example." + std::to_string(i), "A", ""};
  sessions.automatic->setSettings(full);
  keys.add(AutomaticPopupContent::addChosenApp(Bundle{"com.example.c", "C", std::nullopt, "/C.app"},
                                               *sessions.automatic));
  const auto about = AboutPopupContent::current(AboutInfo{"1.0", ""}, Date{0}, SystemTimeZone("UTC"));
  keys.add(about.name, about.version, about.copyright);
  for (const auto& question : {QuitConfirmation::awakeMode(600), QuitConfirmation::deepwake(600),
                               QuitConfirmation::awakeMode(600, false), QuitConfirmation::deepwake(600, false)}) {
    const auto alert = QuitConfirmationAlert::make(question, "en_US", LayoutDirection::leftToRight);
    keys.add(alert->title, alert->message.sentences());
    for (const auto& button : alert->buttons) keys.add(button.title);
  }
  return keys;
}

TEST(ProducedTextsTest, TheCatalogIsExactlyWhatTheInterfaceProduces) {
  std::set<std::pair<std::string, TextTable>> catalog;
  for (const auto& key : TextCatalog::all()) catalog.emplace(std::string(key.key()), key.table());
  const auto keys = produced().found;
  for (const auto& key : keys) EXPECT_TRUE(catalog.contains(key)) << "not in the catalog: " << key.first;
  for (const auto& key : catalog) EXPECT_TRUE(keys.contains(key)) << "produced by nothing: " << key.first;
}

}  // namespace
}  // namespace wakeloft
