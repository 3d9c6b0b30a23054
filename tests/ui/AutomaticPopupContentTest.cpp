#include "ui/AutomaticPopupContent.h"

#include <gtest/gtest.h>

#include "TestAutomaticSessions.h"

namespace wakeloft {
namespace {

using Rule = AutomaticRules::Rule;
using Weekday = Schedule::Weekday;
using Bundle = AutomaticPopupContent::ChosenBundle;

struct AutomaticPopupContentTest : ::testing::Test {
  AutomaticPopupContentTest() { sessions.start(); }
  AutomaticPopupContent content(const std::string& locale = "en_US") const {
    return AutomaticPopupContent::current(*sessions.automatic, locale);
  }
  const AutomaticRules::Settings& settings() const { return sessions.automatic->settings(); }

  testing::TestAutomaticSessions sessions;
};

TEST_F(AutomaticPopupContentTest, EachRuleSwitchTurnsOnlyItsOwnRuleOn) {
  for (const auto rule : {Rule::externalDisplay, Rule::powerAdapter, Rule::apps, Rule::schedule}) {
    EXPECT_TRUE(AutomaticPopupContent::setRule(rule, true, *sessions.automatic));
    for (const auto& shown : content().rules) EXPECT_EQ(shown.toggle.isOn, shown.rule == rule);
    EXPECT_TRUE(settings().isEnabled(rule));
    AutomaticPopupContent::setRule(rule, false, *sessions.automatic);
  }
}

TEST_F(AutomaticPopupContentTest, RulesAProfileFixesAreShownAsSetByTheOrganization) {
  EXPECT_FALSE(content().managedNote);
  sessions.store->rulesForced = true;
  sessions.automatic->reload();
  const auto shown = content();
  EXPECT_TRUE(shown.managedNote);
  EXPECT_FALSE(shown.canAddApp);
  for (const auto& rule : shown.rules) EXPECT_TRUE(rule.toggle.isForced);
}

TEST_F(AutomaticPopupContentTest, TheWeekStartsAsTheLocaleStartsItAndReadsRightToLeftInArabic) {
  const struct {
    const char* locale;
    Weekday first;
    LayoutDirection direction;
  } cases[] = {{"en_US", Weekday::sunday, LayoutDirection::leftToRight},
               {"de_DE", Weekday::monday, LayoutDirection::leftToRight},
               {"ar_EG", Weekday::saturday, LayoutDirection::rightToLeft}};
  for (const auto& c : cases) {
    const auto shown = content(c.locale);
    ASSERT_EQ(shown.days.size(), 7u) << c.locale;
    EXPECT_EQ(shown.days[0].weekday, c.first) << c.locale;
    EXPECT_EQ(static_cast<int>(shown.days[1].weekday), (static_cast<int>(c.first) + 1) % 7) << c.locale;
    EXPECT_EQ(shown.layoutDirection, c.direction) << c.locale;
  }
}

TEST_F(AutomaticPopupContentTest, DaysAndTimesChangeTheScheduleAndATimeBeyondADayChangesNothing) {
  auto& automatic = *sessions.automatic;
  EXPECT_TRUE(AutomaticPopupContent::setWeekday(Weekday::sunday, true, automatic));
  EXPECT_TRUE(AutomaticPopupContent::setWeekday(Weekday::monday, false, automatic));
  EXPECT_TRUE(AutomaticPopupContent::setStart(22 * 60, automatic));
  EXPECT_TRUE(AutomaticPopupContent::setEnd(6 * 60, automatic));
  EXPECT_FALSE(AutomaticPopupContent::setEnd(Schedule::minutesPerDay, automatic));
  const Schedule expected{0x5E, 22 * 60, 6 * 60};  // Tuesday to Friday and Sunday
  EXPECT_EQ(settings().schedule, expected);
  const auto shown = content("de_DE");
  ASSERT_EQ(shown.days.size(), 7u);
  EXPECT_FALSE(shown.days[0].isOn);  // Monday
  EXPECT_TRUE(shown.days[6].isOn);   // Sunday
  EXPECT_EQ(shown.start, 22 * 60);
  EXPECT_EQ(shown.end, 6 * 60);
}

TEST_F(AutomaticPopupContentTest, AnAppIsNamedByItsDisplayNameItsBundleNameOrItsFileName) {
  const struct {
    Bundle bundle;
    const char* name;
  } cases[] = {{{"a", "Display", "Bundle", "/A.app"}, "Display"},
               {{"b", "", "Bundle", "/B.app"}, "Bundle"},
               {{"c", std::nullopt, std::nullopt, "/Applications/Final Cut.app/"}, "Final Cut"}};
  for (const auto& c : cases) EXPECT_EQ(AutomaticPopupContent::addChosenApp(c.bundle, *sessions.automatic), std::nullopt);
  const auto shown = content();
  ASSERT_EQ(shown.apps.size(), 3u);
  for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(shown.apps[i].name.english(), cases[i].name);
  EXPECT_EQ(settings().apps[2].path, "/Applications/Final Cut.app/");
}

TEST_F(AutomaticPopupContentTest, AnAppThatCannotBeKeptIsRefusedWithItsReasonAndLeavesTheListAsItWas) {
  auto& automatic = *sessions.automatic;
  AutomaticPopupContent::addChosenApp({"com.apple.dt.Xcode", "Xcode", std::nullopt, "/X.app"}, automatic);
  EXPECT_EQ(AutomaticPopupContent::addChosenApp({std::nullopt, "Tool", std::nullopt, "/T.app"}, automatic),
            LocalizedText(TextCatalog::appWithoutIdentifier, {"Tool"}));
  EXPECT_EQ(AutomaticPopupContent::addChosenApp({"com.example.bad", "Bad\x01", std::nullopt, "/B.app"}, automatic),
            LocalizedText(TextCatalog::appNotKept, {"Bad\x01"}));
  EXPECT_EQ(AutomaticPopupContent::addChosenApp({"com.apple.dt.Xcode", "Other", std::nullopt, "/O.app"}, automatic),
            std::nullopt);
  ASSERT_EQ(settings().apps.size(), 1u);
  EXPECT_EQ(settings().apps[0].name, "Xcode");

  auto full = settings();
  for (std::size_t i = 1; i < AutomaticRules::Settings::mostApps; ++i) full.apps.push_back({std::to_string(i), "A", ""});
  ASSERT_TRUE(automatic.setSettings(full));
  EXPECT_FALSE(content().canAddApp);
  EXPECT_EQ(AutomaticPopupContent::addChosenApp({"com.example.more", "More", std::nullopt, "/M.app"}, automatic),
            LocalizedText(TextCatalog::appListFull));
  EXPECT_EQ(settings().apps.size(), AutomaticRules::Settings::mostApps);
}

TEST_F(AutomaticPopupContentTest, RemovingAnAppKeepsTheOthers) {
  for (const char* identifier : {"a", "b", "c"}) {
    AutomaticPopupContent::addChosenApp({identifier, identifier, std::nullopt, ""}, *sessions.automatic);
  }
  EXPECT_TRUE(AutomaticPopupContent::removeApp("b", *sessions.automatic));
  ASSERT_EQ(settings().apps.size(), 2u);
  EXPECT_EQ(settings().apps[0].bundleIdentifier, "a");
  EXPECT_EQ(settings().apps[1].bundleIdentifier, "c");
}

TEST(AutomaticPopupOpenPanelTest, OnlyFoldersAndAppBundlesCanBeChosen) {
  const struct {
    const char* path;
    bool isDirectory;
    bool isPackage;
    bool choosable;
  } cases[] = {{"/Applications", true, false, true},          {"/Applications/Xcode.app", true, true, true},
               {"/Applications/Old.APP/", true, true, true},    {"/Users/me/Photos.photoslibrary", true, true, false},
               {"/usr/local/bin/rsync", false, false, false},   {"/Users/me/notes.app", false, false, false}};
  for (const auto& c : cases) {
    EXPECT_EQ(AutomaticPopupContent::isChoosableInOpenPanel(c.path, c.isDirectory, c.isPackage), c.choosable)
        << c.path;
  }
}

}  // namespace
}  // namespace wakeloft
