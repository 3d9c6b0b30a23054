#include "ui/AutomaticPopupContent.h"

#include <algorithm>
#include <cctype>

#include "ui/LocaleIdentifiers.h"
#include "ui/WeekdayWords.h"

namespace wakeloft {

namespace {

using Rule = AutomaticRules::Rule;
using Settings = AutomaticRules::Settings;

bool& ruleSwitch(Settings& settings, Rule rule) {
  switch (rule) {
    case Rule::externalDisplay: return settings.whileExternalDisplay;
    case Rule::powerAdapter: return settings.whileOnPowerAdapter;
    case Rule::apps: return settings.whileAppsRun;
    case Rule::schedule: break;
  }
  return settings.onSchedule;
}

template <typename Change>
bool change(AutomaticSessionController& automatic, Change edit) {
  auto settings = automatic.settings();
  edit(settings);
  return automatic.setSettings(settings);
}

// The last part of the path, without a trailing slash or ".app".
std::string fileName(const std::string& path) {
  std::string name = path;
  while (name.size() > 1 && name.back() == '/') name.pop_back();
  if (const auto slash = name.rfind('/'); slash != std::string::npos) name.erase(0, slash + 1);
  if (name.size() > 4 && name.compare(name.size() - 4, 4, ".app") == 0) name.resize(name.size() - 4);
  return name;
}

}  // namespace

AutomaticPopupContent AutomaticPopupContent::current(const AutomaticSessionController& automatic,
                                                     const std::string& locale, const ScreenLockSetting* screenLock) {
  auto settings = automatic.settings();
  AutomaticPopupContent content{.title = TextCatalog::automatic, .rulesAreForced = automatic.areRulesForced()};
  const auto row = [&](Rule rule, TextKey title, TextKey hint) {
    content.rules.push_back({rule, {title, ruleSwitch(settings, rule), hint, content.rulesAreForced}});
  };
  row(Rule::externalDisplay, TextCatalog::whileExternalDisplay, TextCatalog::whileExternalDisplayHint);
  row(Rule::powerAdapter, TextCatalog::whileOnPowerAdapter, TextCatalog::whileOnPowerAdapterHint);
  row(Rule::apps, TextCatalog::whileAppsRun, TextCatalog::whileAppsRunHint);
  row(Rule::schedule, TextCatalog::onSchedule, TextCatalog::onScheduleHint);

  for (const auto& app : settings.apps) {
    const auto name = LocalizedText::verbatim(app.name);
    content.apps.push_back({app.bundleIdentifier, name, app.path, {TextCatalog::removeApp, {app.name}}});
  }
  content.canAddApp = settings.apps.size() < Settings::mostApps && !content.rulesAreForced;

  const int first = static_cast<int>(WeekdayWords::firstWeekday(locale));
  for (int offset = 0; offset < 7; ++offset) {
    const auto day = static_cast<Schedule::Weekday>((first + offset) % 7);
    content.days.push_back({day, LocalizedText::verbatim(WeekdayWords::name(day, locale, WeekdayWords::Style::abbreviated)),
                            LocalizedText::verbatim(WeekdayWords::name(day, locale, WeekdayWords::Style::full)),
                            settings.schedule.includes(day)});
  }
  content.start = settings.schedule.start;
  content.end = settings.schedule.end;
  content.layoutDirection = LocaleIdentifiers::isRightToLeft(LocaleIdentifiers::languageOf(locale).language)
                                ? LayoutDirection::rightToLeft
                                : LayoutDirection::leftToRight;

  content.combinations = {{AutomaticRules::Combination::any, TextCatalog::combinationAny},
                          {AutomaticRules::Combination::all, TextCatalog::combinationAll}};
  content.combination = settings.combination;
  if (screenLock) {
    content.stopWhenScreenLocks = Switch{TextCatalog::stopWhenScreenLocks, screenLock->stopsWhenScreenLocks(),
                                         TextCatalog::stopWhenScreenLocksHint, screenLock->isForced()};
  }
  if (content.rulesAreForced || (screenLock && screenLock->isForced())) {
    content.managedNote = LocalizedText(TextCatalog::setByOrganization);
  }
  return content;
}

bool AutomaticPopupContent::setRule(Rule rule, bool on, AutomaticSessionController& automatic) {
  return change(automatic, [&](Settings& settings) { ruleSwitch(settings, rule) = on; });
}

bool AutomaticPopupContent::setWeekday(Schedule::Weekday day, bool on, AutomaticSessionController& automatic) {
  return change(automatic, [&](Settings& settings) {
    auto& days = settings.schedule.weekdays;
    days = on ? static_cast<std::uint8_t>(days | Schedule::bit(day))
              : static_cast<std::uint8_t>(days & ~Schedule::bit(day));
  });
}

bool AutomaticPopupContent::setStart(int minutes, AutomaticSessionController& automatic) {
  return change(automatic, [&](Settings& settings) { settings.schedule.start = minutes; });
}

bool AutomaticPopupContent::setEnd(int minutes, AutomaticSessionController& automatic) {
  return change(automatic, [&](Settings& settings) { settings.schedule.end = minutes; });
}

bool AutomaticPopupContent::choose(AutomaticRules::Combination combination, AutomaticSessionController& automatic) {
  return change(automatic, [&](Settings& settings) { settings.combination = combination; });
}

bool AutomaticPopupContent::removeApp(const std::string& bundleIdentifier, AutomaticSessionController& automatic) {
  return change(automatic, [&](Settings& settings) {
    std::erase_if(settings.apps, [&](const auto& app) { return app.bundleIdentifier == bundleIdentifier; });
  });
}

std::optional<LocalizedText> AutomaticPopupContent::addChosenApp(const ChosenBundle& bundle,
                                                                 AutomaticSessionController& automatic) {
  const auto present = [](const std::optional<std::string>& text) { return text && !text->empty(); };
  const std::string name = present(bundle.displayName) ? *bundle.displayName
                           : present(bundle.bundleName) ? *bundle.bundleName
                                                        : fileName(bundle.path);
  if (!present(bundle.bundleIdentifier)) return LocalizedText(TextCatalog::appWithoutIdentifier, {name});
  auto settings = automatic.settings();
  const auto& identifier = *bundle.bundleIdentifier;
  if (std::ranges::any_of(settings.apps, [&](const auto& app) { return app.bundleIdentifier == identifier; })) {
    return std::nullopt;
  }
  if (settings.apps.size() >= Settings::mostApps) return LocalizedText(TextCatalog::appListFull);
  settings.apps.push_back({identifier, name, bundle.path});
  if (!automatic.setSettings(settings)) return LocalizedText(TextCatalog::appNotKept, {name});
  return std::nullopt;
}

void AutomaticPopupContent::setStopsWhenScreenLocks(bool on, ScreenLockSetting& screenLock) {
  screenLock.setStopsWhenScreenLocks(on);
}

bool AutomaticPopupContent::isChoosableInOpenPanel(const std::string& path, bool isDirectory, bool isPackage) {
  if (!isDirectory) return false;
  if (!isPackage) return true;
  std::string trimmed = path;
  while (trimmed.size() > 1 && trimmed.back() == '/') trimmed.pop_back();
  if (trimmed.size() < 4) return false;
  std::string extension = trimmed.substr(trimmed.size() - 4);
  std::ranges::transform(extension, extension.begin(), [](unsigned char c) { return std::tolower(c); });
  return extension == ".app";
}

}  // namespace wakeloft
