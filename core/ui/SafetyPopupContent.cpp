#include "ui/SafetyPopupContent.h"

#include "base/NumberWords.h"
#include "ui/TextCatalog.h"

namespace wakeloft {

namespace {

template <typename Fields>
auto& field(Fields& settings, SafetyPopupContent::Setting setting) {
  switch (setting) {
    case SafetyPopupContent::Setting::stopsInLowPowerMode: return settings.stopsInLowPowerMode;
    case SafetyPopupContent::Setting::stopsWhenLidOpens: return settings.stopsWhenLidOpens;
    case SafetyPopupContent::Setting::onlyOnPowerAdapter:
    case SafetyPopupContent::Setting::automationMayTurnOn: break;
  }
  return settings.onlyOnPowerAdapter;
}

}  // namespace

SafetyPopupContent SafetyPopupContent::current(const LidAwakeController& lid, const std::string& locale,
                                               const DeepwakeAutomationConsent* consent) {
  auto settings = lid.guardrailSettings();
  const auto forced = lid.forcedGuardrails();
  SafetyPopupContent content{TextCatalog::safety, TextCatalog::batteryFloor,     {}, settings.batteryFloor,
                             forced.batteryFloor, TextCatalog::batteryFloorHint, {}, TextCatalog::heatAlwaysStops};
  for (const int floor : DeepwakeGuardrails::Settings::batteryFloors) {
    content.floors.push_back({floor, floor == 0 ? LocalizedText(TextCatalog::batteryFloorNever)
                                                : LocalizedText(TextCatalog::batteryFloorPercent,
                                                                {NumberWords::percent(floor, locale)})});
  }
  const auto row = [&](Setting setting, TextKey title, TextKey hint) {
    content.switches.push_back({setting, title, field(settings, setting), hint, field(forced, setting)});
  };
  row(Setting::stopsInLowPowerMode, TextCatalog::stopInLowPowerMode, TextCatalog::stopInLowPowerModeHint);
  row(Setting::stopsWhenLidOpens, TextCatalog::stopWhenLidOpens, TextCatalog::stopWhenLidOpensHint);
  row(Setting::onlyOnPowerAdapter, TextCatalog::onlyOnPowerAdapter, TextCatalog::onlyOnPowerAdapterHint);
  if (consent) {
    content.automation = Switch{Setting::automationMayTurnOn, TextCatalog::deepwakeAutomationSwitch,
                                 consent->answer() == DeepwakeAutomationConsent::Answer::allowed,
                                 TextCatalog::deepwakeAutomationHint, consent->isForced()};
  }
  return content;
}

void SafetyPopupContent::chooseFloor(int percent, LidAwakeController& lid) {
  if (!DeepwakeGuardrails::Settings::isBatteryFloor(percent)) return;
  auto settings = lid.guardrailSettings();
  settings.batteryFloor = percent;
  lid.setGuardrailSettings(settings);
}

void SafetyPopupContent::set(Setting setting, bool on, LidAwakeController& lid, DeepwakeAutomationConsent* consent) {
  if (setting == Setting::automationMayTurnOn) {
    if (consent) consent->answer(on);
    return;
  }
  auto settings = lid.guardrailSettings();
  field(settings, setting) = on;
  lid.setGuardrailSettings(settings);
}

}  // namespace wakeloft
