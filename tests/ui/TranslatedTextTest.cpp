// The interface's texts resolved through the translated tables, as the app
// shows them to German and Arabic users.

#include <gtest/gtest.h>

#include "AppTables.h"
#include "TestControllers.h"
#include "ui/AwakePanelContent.h"
#include "ui/QuitConfirmationAlert.h"
#include "ui/SafetyPopupContent.h"
#include "ui/TextCatalog.h"

namespace wakeloft {
namespace {

using testing::LanguageTables;
using testing::TestControllers;

TEST(TranslatedTextTest, APanelInGermanAndArabicWithItsDurationsAndAnErrorCodeKeptLeftToRightInArabic) {
  const LanguageTables german("de");
  const LanguageTables arabic("ar");
  TestControllers app;
  app.start();
  app.awake->turnOn(5430);
  const auto panel = AwakePanelContent::current(app.controllers(), "de_DE", {15, 0, 0});
  EXPECT_EQ(panel.statusLine.resolved(german.lookup()), "Ein \u00B7 noch 1:30:30");
  EXPECT_EQ(panel.header.spokenStatus.resolved(german.lookup()), "Wakeloft, ein, noch 1 Stunde, 30 Minuten");

  app.awake->turnOn(3930);
  const auto arabicPanel = AwakePanelContent::current(app.controllers(), "ar", {15, 0, 0});
  EXPECT_EQ(arabicPanel.header.spokenStatus.resolved(arabic.lookup()),
            "\u200FWakeloft\u060C \u0642\u064A\u062F \u0627\u0644\u062A\u0634\u063A\u064A\u0644\u060C \u064A\u062A\u0628\u0642\u0649 \u0633\u0627\u0639\u0629 \u0648\u0665 \u062F\u0642\u0627\u0626\u0642");  // Wakeloft, on, 1 hour and 5 minutes left

  const LocalizedText code(TextCatalog::assertionRefused, {std::int32_t{-536870199}});
  EXPECT_EQ(code.resolved(arabic.lookup()),
            "\u062A\u0639\u0630\u0651\u0631 \u0639\u0644\u0649 macOS \u0625\u0628\u0642\u0627\u0621 "
            "\u062C\u0647\u0627\u0632 Mac \u0645\u0633\u062A\u064A\u0642\u0638\u064B\u0627 (\u062E\u0637\u0623 IOKit "
            "\u0631\u0642\u0645 \u2066-536870199\u2069).");
}

struct Language {
  std::string tables;
  std::string locale;
};
const Language english{"en", "en_US"}, german{"de", "de_DE"}, arabic{"ar", "ar"};

TEST(TranslatedTextTest, TheQuitAlertSaysTheTimeLeftInFullWordsInEachLanguage) {
  for (const auto& [language, expected] : std::vector<std::pair<Language, std::string>>{
           {english, "1 hour, 30 minutes left in this session."},
           {german, "Noch 1 Stunde, 30 Minuten in dieser Sitzung."},
           {arabic, "\u064A\u062A\u0628\u0642\u0649 \u0633\u0627\u0639\u0629 \u0648\u0663\u0660 "
                    "\u062F\u0642\u064A\u0642\u0629 \u0641\u064A \u0647\u0630\u0647 "
                    "\u0627\u0644\u062C\u0644\u0633\u0629."},  // 1 hour and 30 minutes left in this session.
       }) {
    const auto alert =
        QuitConfirmationAlert::make(QuitConfirmation::awakeMode(5400), language.locale, LayoutDirection::leftToRight);
    ASSERT_TRUE(alert);
    ASSERT_FALSE(alert->message.sentences().empty());
    EXPECT_EQ(alert->message.sentences()[0].resolved(LanguageTables(language.tables).lookup()), expected);
  }
}

TEST(TranslatedTextTest, PercentagesHaveTheLocalesDigitsAndSign) {
  TestControllers app;
  app.start();
  for (const auto& [language, expected] : std::vector<std::pair<Language, std::string>>{
           {english, "At 20%"}, {german, "Bei 20\u00A0%"}, {arabic, "\u0639\u0646\u062F \u0662\u0660\u066A\u061C"}}) {
    const auto floors = SafetyPopupContent::current(*app.lid, language.locale).floors;
    ASSERT_GT(floors.size(), 2u);
    EXPECT_EQ(floors[2].percent, 20);
    EXPECT_EQ(floors[2].label.resolved(LanguageTables(language.tables).lookup()), expected);
  }
}

TEST(TranslatedTextTest, ACountPicksItsWordingByTheLocalesPluralRules) {
  struct Case {
    Language language;
    int count;
    PluralCategory category;
    std::string expected;
  };
  // "On · until ... end"
  const std::string until =
      "\u0642\u064A\u062F \u0627\u0644\u062A\u0634\u063A\u064A\u0644 \u00B7 \u062D\u062A\u0649 "
      "\u062A\u0646\u062A\u0647\u064A ";
  const std::string process = " \u0639\u0645\u0644\u064A\u0629";
  for (const auto& [language, count, category, expected] : std::vector<Case>{
           {arabic, 0, PluralCategory::zero, until + "\u0660" + process},
           {arabic, 1, PluralCategory::one, until + "\u0639\u0645\u0644\u064A\u0629 \u0648\u0627\u062D\u062F\u0629"},
           {arabic, 2, PluralCategory::two, until + "\u0639\u0645\u0644\u064A\u062A\u0627\u0646"},
           {arabic, 3, PluralCategory::few, until + "\u0663 \u0639\u0645\u0644\u064A\u0627\u062A"},
           {arabic, 11, PluralCategory::many, until + "\u0661\u0661" + process},
           {arabic, 100, PluralCategory::other, until + "\u0661\u0660\u0660" + process},
           {english, 1, PluralCategory::one, "On \u00B7 until 1 process ends"},
       }) {
    SCOPED_TRACE(language.locale + " " + std::to_string(count));
    const auto counted = TextCount::of(count, language.locale);
    EXPECT_EQ(counted.category, category);
    const LocalizedText text(TextCatalog::statusOnUntilProcessesEnd, {counted});
    EXPECT_EQ(text.resolved(LanguageTables(language.tables).lookup()), expected);
  }
}

TEST(TranslatedTextTest, ThePanelCountsSeveralHeldProcesses) {
  TestControllers app;
  app.processes->start(4242, 7, "make");
  app.processes->start(4243, 8, "xcodebuild");
  app.start();
  for (const int pid : {4242, 4243}) app.binding->hold(pid, std::nullopt);
  for (const auto& [language, expected] : std::vector<std::pair<Language, std::string>>{
           {english, "Wakeloft, on, until 2 processes end"}, {german, "Wakeloft, ein, bis 2 Prozesse enden"}}) {
    const auto panel = AwakePanelContent::current(app.controllers(), language.locale, {14, 0, 0});
    EXPECT_EQ(panel.header.spokenLabel(LanguageTables(language.tables).lookup()), expected);
  }
}

}  // namespace
}  // namespace wakeloft
