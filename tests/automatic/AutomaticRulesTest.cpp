// Which rules keep the Mac awake, and the one named for them.

#include "automatic/AutomaticRules.h"

#include <gtest/gtest.h>

namespace wakeloft {
namespace {

using Rule = AutomaticRules::Rule;
using Facts = AutomaticRules::Facts;
constexpr auto all = AutomaticRules::Combination::all;

AutomaticRules::Settings rules(bool display, bool power, bool apps, bool schedule,
                               AutomaticRules::Combination combination = AutomaticRules::Combination::any) {
  return {display, power, apps, {{"com.apple.dt.Xcode", "Xcode", ""}, {"com.figma.Desktop", "Figma", ""}},
          schedule, {}, combination};
}

TEST(AutomaticRulesTest, EnabledRulesHoldAsTheirFactsDoInNamingOrderCombinedAsChosen) {
  const Facts docked{true, true, {"com.apple.Safari"}, false};
  const struct {
    AutomaticRules::Settings settings;
    Facts facts;
    std::vector<Rule> holding;
    bool hold;
  } cases[] = {
      {{}, {true, true, {"com.figma.Desktop"}, true}, {}, false},
      {rules(1, 1, 1, 1), {}, {}, false},
      {rules(1, 1, 1, 1), docked, {Rule::externalDisplay, Rule::powerAdapter}, true},
      {rules(1, 1, 1, 1, all), docked, {Rule::externalDisplay, Rule::powerAdapter}, false},
      {rules(1, 1, 0, 0, all), docked, {Rule::externalDisplay, Rule::powerAdapter}, true},
      {rules(1, 1, 1, 1, all), {true, true, {"com.figma.Desktop"}, true},
       {Rule::externalDisplay, Rule::powerAdapter, Rule::apps, Rule::schedule}, true},
      {rules(0, 0, 1, 1), {false, false, {}, true}, {Rule::schedule}, true},
  };
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    EXPECT_EQ(AutomaticRules::holding(cases[i].settings, cases[i].facts), cases[i].holding) << "case " << i;
    EXPECT_EQ(AutomaticRules::hold(cases[i].settings, cases[i].facts), cases[i].hold) << "case " << i;
  }
}

}  // namespace
}  // namespace wakeloft
