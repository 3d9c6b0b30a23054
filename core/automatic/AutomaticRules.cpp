#include "automatic/AutomaticRules.h"

#include <algorithm>

#include "base/Utf8.h"

namespace wakeloft {

namespace {

constexpr AutomaticRules::Rule namingOrder[] = {AutomaticRules::Rule::externalDisplay,
                                                AutomaticRules::Rule::powerAdapter, AutomaticRules::Rule::apps,
                                                AutomaticRules::Rule::schedule};

bool holdsAlone(AutomaticRules::Rule rule, const AutomaticRules::Settings& settings,
                const AutomaticRules::Facts& facts) {
  switch (rule) {
    case AutomaticRules::Rule::externalDisplay:
      return facts.hasExternalDisplay;
    case AutomaticRules::Rule::powerAdapter:
      return facts.isOnPowerAdapter;
    case AutomaticRules::Rule::apps:
      return AutomaticRules::runningApp(settings, facts).has_value();
    case AutomaticRules::Rule::schedule:
      return facts.isWithinSchedule;
  }
  return false;
}

bool isKeepableText(std::string_view text) {
  if (text.size() > AutomaticRules::Settings::longestText) return false;
  for (std::string_view rest = text; !rest.empty();) {
    const auto scalar = Utf8::front(rest);
    if (!scalar.valid || scalar.value < 0x20 || (scalar.value >= 0x7F && scalar.value < 0xA0)) return false;
    rest.remove_prefix(scalar.length);
  }
  return true;
}

}  // namespace

bool AutomaticRules::Settings::isValid() const {
  if (!schedule.isValid() || apps.size() > mostApps) return false;
  for (auto app = apps.begin(); app != apps.end(); ++app) {
    if (app->bundleIdentifier.empty() || !isKeepableText(app->bundleIdentifier) || !isKeepableText(app->name) ||
        !isKeepableText(app->path)) {
      return false;
    }
    const auto same = [&](const ChosenApp& other) { return other.bundleIdentifier == app->bundleIdentifier; };
    if (std::any_of(apps.begin(), app, same)) return false;
  }
  return true;
}

bool AutomaticRules::Settings::isEnabled(Rule rule) const {
  switch (rule) {
    case Rule::externalDisplay:
      return whileExternalDisplay;
    case Rule::powerAdapter:
      return whileOnPowerAdapter;
    case Rule::apps:
      return whileAppsRun;
    case Rule::schedule:
      return onSchedule;
  }
  return false;
}

std::vector<AutomaticRules::Rule> AutomaticRules::holding(const Settings& settings, const Facts& facts) {
  std::vector<Rule> rules;
  for (const Rule rule : namingOrder) {
    if (settings.isEnabled(rule) && holdsAlone(rule, settings, facts)) rules.push_back(rule);
  }
  return rules;
}

bool AutomaticRules::hold(const Settings& settings, const Facts& facts) {
  const auto enabled = std::count_if(std::begin(namingOrder), std::end(namingOrder),
                                     [&](Rule rule) { return settings.isEnabled(rule); });
  const auto holds = static_cast<long>(holding(settings, facts).size());
  if (settings.combination == Combination::all) return enabled > 0 && holds == enabled;
  return holds > 0;
}

std::optional<AutomaticRules::ChosenApp> AutomaticRules::runningApp(const Settings& settings, const Facts& facts) {
  if (!settings.whileAppsRun) return std::nullopt;
  for (const auto& app : settings.apps) {
    const auto& running = facts.runningApps;
    if (std::find(running.begin(), running.end(), app.bundleIdentifier) != running.end()) return app;
  }
  return std::nullopt;
}

}  // namespace wakeloft
