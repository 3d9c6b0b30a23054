// The interface's texts resolved through the translated tables, as the app
// shows them to German and Arabic users.

#include <gtest/gtest.h>

#include "AppTables.h"
#include "TestControllers.h"
#include "ui/AwakePanelContent.h"
#include "ui/QuitConfirmationAlert.h"
#include "ui/SafetyPopupContent.h"
#include "ui/TextCatalog.h"
#include "ui/TextCount.h"

namespace wakeloft {
namespace {

using testing::LanguageTables;
using testing::TestControllers;

struct Language {
  std::string tables;
  std::string locale;
};
const Language english{"en", "en_US"}, german{"de", "de_DE"}, arabic{"ar", "ar"};

TEST(TranslatedTextTest, APanelInGermanHasItsDurationsInGerman) {
  TestControllers app;
  app.start();
  app.awake->turnOn(5430);
  const auto panel = AwakePanelContent::current(app.controllers(), german.locale, {15, 0, 0});
  EXPECT_EQ(panel.header.spokenStatus.resolved(LanguageTables(german.tables).lookup()),
            "Wakeloft, ein, noch 1 Stunde, 30 Minuten");
}

TEST(TranslatedTextTest, TheQuitAlertSaysTheTimeLeftInFullWordsInEachLanguage) {
  for (const auto& [language, expected] : std::vector<std::pair<Language, std::string>>{
           {german, "Noch 1 Stunde, 30 Minuten in dieser Sitzung."},
           {arabic,
            "\u064A\u062A\u0628\u0642\u0649 \u0633\u0627\u0639\u0629 \u0648\u0663\u0660 "
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
  const auto floors = SafetyPopupContent::current(*app.lid, arabic.locale).floors;
  ASSERT_GT(floors.size(), 2u);
  EXPECT_EQ(floors[2].label.resolved(LanguageTables(arabic.tables).lookup()),
            "\u0639\u0646\u062F \u0662\u0660\u066A\u061C");  // At 20%
}

// The key is the "other" wording; one process has its own.
TEST(TranslatedTextTest, ACountPicksItsWordingByTheLocalesPluralRules) {
  const LocalizedText text(TextCatalog::statusOnUntilProcessesEnd, {TextCount::of(1, english.locale)});
  EXPECT_EQ(text.resolved(LanguageTables(english.tables).lookup()), "On \u00B7 until 1 process ends");
}

}  // namespace
}  // namespace wakeloft
