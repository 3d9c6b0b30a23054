// Which rules keep the Mac awake, and the one named for them.

#include "automatic/AutomaticRules.h"

#include <gtest/gtest.h>

namespace wakeloft {
namespace {

using Rule = AutomaticRules::Rule;
using Combination = AutomaticRules::Combination;

const AutomaticRules::ChosenApp xcode{"com.apple.dt.Xcode", "Xcode", "/Applications/Xcode.app"};
const AutomaticRules::ChosenApp figma{"com.figma.Desktop", "Figma", "/Applications/Figma.app"};

AutomaticRules::Settings everyRule(Combination combination) {
  AutomaticRules::Settings settings;
  settings.whileExternalDisplay = settings.whileOnPowerAdapter = settings.whileAppsRun = settings.onSchedule = true;
  settings.apps = {xcode, figma};
  settings.combination = combination;
  return settings;
}

TEST(AutomaticRulesTest, EnabledRulesHoldAsTheirFactsDoInNamingOrderCombinedAsChosen) {
  const AutomaticRules::Facts none;
  const AutomaticRules::Facts all{true, true, {"com.figma.Desktop"}, true};
  const AutomaticRules::Facts docked{true, true, {"com.apple.Safari"}, false};
  auto displayOnly = everyRule(Combination::any);
  displayOnly.whileOnPowerAdapter = displayOnly.whileAppsRun = displayOnly.onSchedule = false;
  auto displayAndPower = everyRule(Combination::all);
  displayAndPower.whileAppsRun = displayAndPower.onSchedule = false;
  const struct {
    const char* name;
    AutomaticRules::Settings settings;
    AutomaticRules::Facts facts;
    std::vector<Rule> holding;
    bool hold;
  } cases[] = {
      {"nothing enabled", {}, all, {}, false},
      {"nothing holds", everyRule(Combination::any), none, {}, false},
      {"any, two hold", everyRule(Combination::any), docked, {Rule::externalDisplay, Rule::powerAdapter}, true},
      {"all, two hold", everyRule(Combination::all), docked, {Rule::externalDisplay, Rule::powerAdapter}, false},
      {"all, every one holds", everyRule(Combination::all), all,
       {Rule::externalDisplay, Rule::powerAdapter, Rule::apps, Rule::schedule}, true},
      {"disabled rules do not count", displayOnly, docked, {Rule::externalDisplay}, true},
      {"all of the enabled", displayAndPower, docked, {Rule::externalDisplay, Rule::powerAdapter}, true},
      {"all, on battery", displayAndPower, {true, false, {}, false}, {Rule::externalDisplay}, false},
      {"an unchosen app", everyRule(Combination::any), {false, false, {"com.apple.Safari"}, false}, {}, false},
      {"the schedule alone", everyRule(Combination::any), {false, false, {}, true}, {Rule::schedule}, true},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(AutomaticRules::holding(c.settings, c.facts), c.holding) << c.name;
    EXPECT_EQ(AutomaticRules::hold(c.settings, c.facts), c.hold) << c.name;
  }
}

TEST(AutomaticRulesTest, AnAppRuleIsNamedByTheFirstChosenAppThatRuns) {
  auto settings = everyRule(Combination::any);
  const AutomaticRules::Facts both{false, false, {"com.figma.Desktop", "com.apple.dt.Xcode"}, false};
  EXPECT_EQ(AutomaticRules::runningApp(settings, both), xcode);
  EXPECT_EQ(AutomaticRules::runningApp(settings, {false, false, {"com.figma.Desktop"}, false}), figma);
  settings.whileAppsRun = false;
  EXPECT_EQ(AutomaticRules::runningApp(settings, both), std::nullopt);
}

}  // namespace
}  // namespace wakeloft
