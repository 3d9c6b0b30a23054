// Every text in the catalog is produced by some part of the interface, and
// every text the parts produce is in the catalog: together with the tables
// test this ties the tables to the code.

#include <gtest/gtest.h>

#include <cctype>
#include <set>
#include <string>
#include <vector>

#include "AppTables.h"
#include "AutomaticApp.h"
#include "TestControllers.h"
#include "prefs/PresetDurations.h"
#include "ui/AwakePanelContent.h"
#include "ui/FailureText.h"
#include "ui/MenuBarItem.h"
#include "ui/AboutPopupContent.h"
#include "ui/QuitConfirmationAlert.h"
#include "ui/SafetyPopupContent.h"
#include "ui/SettingsMenu.h"
#include "ui/SettingsPopupContent.h"
#include "base/Utf8.h"
#include "ui/TextCatalog.h"

namespace wakeloft {
namespace {

using KeySet = std::set<std::pair<std::string, TextTable>>;

void collect(KeySet& keys, const LocalizedText& text) {
  if (text.key()) keys.emplace(std::string(text.key()->key()), text.key()->table());
}

std::vector<AwakeFailure> everyFailure() {
  std::vector<AwakeFailure> failures = {AwakeFailure::AssertionRefused{-1}, AwakeFailure::Reported{"x"},
                                        AwakeFailure::LidHelperUnavailable{},
                                        AwakeFailure::LidHelperRequiresApproval{}};
  for (auto refusal : {LidHelperRefusal::settingUnreadable("d"), LidHelperRefusal::settingUnwritten("d"),
                       LidHelperRefusal::settingNotPutBack("d"), LidHelperRefusal::unrecognized("d"),
                       LidHelperRefusal::deadlineNotANumber(), LidHelperRefusal::settingOnElsewhere(),
                       LidHelperRefusal::settingTurnedOffElsewhere()}) {
    failures.push_back(AwakeFailure::LidHelperRefused{std::move(refusal)});
  }
  return failures;
}

void collect(KeySet& keys, const std::optional<PanelNote>& note) {
  if (!note) return;
  note->spokenLabel([&](TextKey key) -> std::optional<std::string> {
    keys.emplace(std::string(key.key()), key.table());
    return std::nullopt;
  });
  if (note->link) {
    collect(keys, note->link->title);
    if (note->link->accessibilityLabel) collect(keys, *note->link->accessibilityLabel);
  }
}

void collect(KeySet& keys, const PanelSwitch& toggle) {
  collect(keys, toggle.title);
  if (toggle.accessibilityHelp) collect(keys, *toggle.accessibilityHelp);
}

void collect(KeySet& keys, const AwakePanelContent& panel) {
  collect(keys, panel.header.title);
  collect(keys, panel.header.spokenStatus);
  if (panel.header.spokenNote) collect(keys, *panel.header.spokenNote);
  collect(keys, panel.statusLine);
  collect(keys, panel.explanation);
  collect(keys, panel.automaticPause);
  collect(keys, panel.mainButton.title);
  if (panel.sessionControls.cancelTimer) collect(keys, panel.sessionControls.cancelTimer->title);
  if (panel.sessionControls.presetsCaption) collect(keys, *panel.sessionControls.presetsCaption);
  for (const auto& preset : panel.sessionControls.presets) collect(keys, preset.title);
  collect(keys, panel.deepwake.toggle);
  collect(keys, panel.deepwake.caption);
  collect(keys, panel.deepwake.precaution);
  collect(keys, panel.deepwake.failure);
  collect(keys, panel.deepwake.guardrail);
  if (const auto& question = panel.deepwake.automationQuestion) {
    for (const auto& text : {question->text, question->dontAllow.title, question->allow.title}) collect(keys, text);
  }
  collect(keys, panel.deepwake.location);
  if (panel.retry.dontRetry) collect(keys, panel.retry.dontRetry->title);
  collect(keys, panel.retry.failure);
  collect(keys, panel.login.toggle);
  collect(keys, panel.login.approval);
  collect(keys, panel.login.location);
  collect(keys, panel.login.failure);
}

// The panel in every state that changes its words.
void collectPanels(KeySet& keys) {
  const auto shown = [&](testing::TestControllers& app, OperatingSystemVersion system = {14, 0, 0}) {
    collect(keys, AwakePanelContent::current(app.controllers(), "en_US", system));
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
    collect(keys, automatic.panel());
    automatic.act(PanelAction::toggleAwakeMode());
    collect(keys, automatic.panel());
  }
  testing::AutomaticApp grace;
  grace.launch(display);
  grace.machine->current.hasExternalDisplay = false;
  grace.changes->post();
  collect(keys, grace.panel());

  testing::TestControllers translocated;
  translocated.translocated = true;
  translocated.start();
  shown(translocated);
}

KeySet produced() {
  KeySet keys;
  for (const auto& failure : everyFailure()) collect(keys, FailureText::describing(failure));
  collectPanels(keys);
  for (const bool timer : {false, true}) {
    for (const bool lid : {false, true}) {
      collect(keys, MenuBarItem::iconLabel({true, timer, lid}));
    }
  }
  collect(keys, MenuBarItem::iconLabel({}));
  collect(keys, MenuBarItem::iconLabel({.showsUpdateDot = true}));

  collect(keys, SettingsMenu::buttonTitle());
  for (const auto& waitingUpdate : {std::optional<std::string>(), std::optional<std::string>("2.1")}) {
    collect(keys, SettingsMenu::buttonAccessibilityLabel(waitingUpdate));
    for (const auto& item : SettingsMenu::items(waitingUpdate)) {
      if (item.title) collect(keys, *item.title);
    }
  }
  testing::TestControllers app;
  app.start();
  const auto chooser = SettingsPopupContent::current(*app.presets, "en_US");
  collect(keys, chooser.title);
  collect(keys, chooser.hint);
  collect(keys, chooser.rowHelp);
  for (const auto& row : chooser.rows) collect(keys, row.label);
  const auto safety = SafetyPopupContent::current(*app.lid, "en_US", app.consent.get());
  for (const auto& text : {safety.title, safety.floorTitle, safety.floorHint, safety.heatNote, safety.managedNote}) {
    collect(keys, text);
  }
  for (const auto& floor : safety.floors) collect(keys, floor.label);
  auto rows = safety.switches;
  if (safety.automation) rows.push_back(*safety.automation);
  for (const auto& row : rows) {
    collect(keys, row.title);
    collect(keys, row.hint);
  }
  struct Utc final : TimeZone {
    int secondsFromGMT(Date) const override { return 0; }
  };
  const auto about = AboutPopupContent::current(AboutInfo{"1.0", ""}, Date{0}, Utc());
  collect(keys, about.name);
  collect(keys, *about.version);
  collect(keys, about.copyright);
  for (const auto& question : {QuitConfirmation::awakeMode(600), QuitConfirmation::deepwake(600),
                               QuitConfirmation::awakeMode(600, false), QuitConfirmation::deepwake(600, false)}) {
    const auto alert = QuitConfirmationAlert::make(question, "en_US", LayoutDirection::leftToRight);
    collect(keys, alert->title);
    for (const auto& sentence : alert->message.sentences()) collect(keys, sentence);
    for (const auto& button : alert->buttons) collect(keys, button.title);
  }
  return keys;
}

TEST(ProducedTextsTest, TheCatalogIsExactlyWhatTheInterfaceProduces) {
  KeySet catalog;
  for (const auto& key : TextCatalog::all()) catalog.emplace(std::string(key.key()), key.table());
  auto keys = produced();
  for (const auto& key : keys) EXPECT_TRUE(catalog.contains(key)) << "not in the catalog: " << key.first;
  for (const auto& key : catalog) EXPECT_TRUE(keys.contains(key)) << "produced by nothing: " << key.first;
}

// Everything VoiceOver reads whole, in `locale`, with sessions of each of
// `seconds`: the panel's header, labels and help, the preset chooser's rows,
// the quit alerts.
std::vector<std::string> spokenTexts(const std::string& locale, const TextLookup& lookup,
                                     const std::vector<double>& seconds) {
  std::vector<std::string> texts;
  const auto say = [&](const std::optional<LocalizedText>& text) {
    texts.push_back(text ? text->resolved(lookup) : "");
  };
  const auto sayPanel = [&](const testing::TestControllers& app) {
    const auto panel = AwakePanelContent::current(app.controllers(), locale, {15, 0, 0});
    texts.push_back(panel.header.spokenLabel(lookup));
    for (const auto& preset : panel.sessionControls.presets) say(preset.accessibilityLabel);
    for (const auto* toggle : {&panel.deepwake.toggle, &panel.login.toggle}) say(toggle->accessibilityHelp);
    for (const auto& note : {panel.deepwake.guardrail, panel.deepwake.failure, panel.retry.failure}) {
      texts.push_back(note ? note->spokenLabel(lookup) : "");
    }
  };
  testing::TestControllers idle;
  idle.start();
  sayPanel(idle);
  for (const auto& row : SettingsPopupContent::current(*idle.presets, locale).rows) say(row.spokenLabel);
  for (const double length : seconds) {
    testing::TestControllers app;
    app.processes->start(4242, 7, "make");
    app.processes->start(4243, 8, "xcodebuild");
    app.start();
    app.awake->turnOn(length);
    sayPanel(app);
    for (const int pid : {4242, 4243}) {
      app.binding->hold(pid, length);
      sayPanel(app);
    }
    for (const auto& question : {QuitConfirmation::awakeMode(length), QuitConfirmation::deepwake(length)}) {
      const auto alert = QuitConfirmationAlert::make(question, locale, LayoutDirection::leftToRight);
      texts.push_back(alert->title.resolved(lookup) + " " + alert->message.resolved(lookup));
    }
  }
  return texts;
}

// Whether `text` holds `form` as a whole: not the start of a longer word,
// as the short "25 د" starts the full "25 دقيقة".
bool holdsWhole(std::string_view text, std::string_view form) {
  for (auto at = text.find(form); at != std::string_view::npos; at = text.find(form, at + 1)) {
    const auto rest = text.substr(at + form.size());
    const char32_t next = rest.empty() ? U' ' : Utf8::front(rest).value;
    const bool latin = (next < 0x80 && std::isalpha(static_cast<int>(next))) || (next >= 0xC0 && next <= 0x24F);
    if (!latin && !(next >= 0x0620 && next <= 0x064A)) return true;
  }
  return false;
}

TEST(ProducedTextsTest, NothingVoiceOverReadsHasAShortDurationInAnyLanguage) {
  const std::vector<double> seconds{600, 1500, 5400};
  for (const auto& [language, locale] :
       std::vector<std::pair<std::string, std::string>>{{"en", "en_US"}, {"de", "de_DE"}, {"ar", "ar"}}) {
    SCOPED_TRACE(locale);
    std::vector<std::string> shortForms;
    for (const double length : seconds) shortForms.push_back(AwakeDuration{length}.label(locale));
    for (const auto& preset : PresetDurations::candidates) shortForms.push_back(preset.label(locale));
    const testing::LanguageTables tables(language);
    for (const auto& text : spokenTexts(locale, tables.lookup(), seconds)) {
      for (const auto& form : shortForms) EXPECT_FALSE(holdsWhole(text, form)) << "\"" << form << "\" in: " << text;
    }
  }
}

}  // namespace
}  // namespace wakeloft
