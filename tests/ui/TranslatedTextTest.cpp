// The interface's texts resolved through the translated tables, as the app
// shows them to German and Arabic users.

#include <gtest/gtest.h>

#include "AppTables.h"
#include "TestControllers.h"
#include "ui/AwakePanelContent.h"
#include "ui/QuitConfirmationAlert.h"
#include "ui/TextCatalog.h"

namespace wakeloft {
namespace {

using testing::LanguageTables;
using testing::TestControllers;

TEST(TranslatedTextTest, APanelAndAQuitQuestionInGermanAndArabicWithTheirDurationsNumbersDetailsAndSentenceOrder) {
  const LanguageTables german("de");
  const LanguageTables arabic("ar");
  TestControllers app;
  app.start();
  app.awake->turnOn(5430);
  const auto panel = AwakePanelContent::current(app.controllers(), "de_DE", {15, 0, 0});
  EXPECT_EQ(panel.statusLine.resolved(german.lookup()), "Ein \u00B7 noch 1:30:30");
  EXPECT_EQ(panel.header.spokenStatus.resolved(german.lookup()), "Wakeloft, ein, noch 1 Stunde, 30 Minuten");
  EXPECT_EQ(panel.mainButton.title.resolved(german.lookup()), "Ausschalten");
  EXPECT_EQ(panel.deepwake.toggle.title.resolved(german.lookup()), "Deepwake");

  app.awake->turnOn(3930);
  const auto arabicPanel = AwakePanelContent::current(app.controllers(), "ar", {15, 0, 0});
  EXPECT_EQ(arabicPanel.header.spokenStatus.resolved(arabic.lookup()),
            "\u200FWakeloft\u060C \u0642\u064A\u062F \u0627\u0644\u062A\u0634\u063A\u064A\u0644\u060C \u064A\u062A\u0628\u0642\u0649 \u0633\u0627\u0639\u0629 \u0648\u0665 \u062F\u0642\u0627\u0626\u0642");  // Wakeloft, on, 1 hour and 5 minutes left

  const LocalizedText code(TextCatalog::assertionRefused, {std::int32_t{-536870199}});
  EXPECT_EQ(code.resolved(german.lookup()), "macOS konnte deinen Mac nicht wach halten (IOKit-Fehler -536870199).");
  EXPECT_EQ(code.resolved(arabic.lookup()),
            "\u062A\u0639\u0630\u0651\u0631 \u0639\u0644\u0649 macOS \u0625\u0628\u0642\u0627\u0621 "
            "\u062C\u0647\u0627\u0632 Mac \u0645\u0633\u062A\u064A\u0642\u0638\u064B\u0627 (\u062E\u0637\u0623 IOKit "
            "\u0631\u0642\u0645 \u2066-536870199\u2069).");

  const auto alert = QuitConfirmationAlert::make(QuitConfirmation::deepwake(1500), "ar", LayoutDirection::rightToLeft);
  ASSERT_TRUE(alert);
  const std::string message = alert->message.resolved(arabic.lookup());
  const std::string label = AwakeDuration{1500}.label("ar");
  EXPECT_EQ(message.find("\u064A\u062A\u0628\u0642\u0649 " + label), 0u);  // "%@ left" comes first
  EXPECT_NE(message.find("Deepwake"), std::string::npos);
  EXPECT_EQ(alert->buttons[1].title.resolved(arabic.lookup()), "\u0625\u0644\u063A\u0627\u0621");
}

}  // namespace
}  // namespace wakeloft
