#include "ui/LocalizedText.h"

#include <gtest/gtest.h>

#include <map>

#include "AppTables.h"
#include "ui/TextCatalog.h"
#include "ui/TextCount.h"

namespace wakeloft {
namespace {

TextLookup tableOf(std::map<std::string, std::string> entries) {
  return [entries = std::move(entries)](TextKey key) -> std::optional<std::string> {
    const auto found = entries.find(std::string(key.key()));
    if (found == entries.end()) return std::nullopt;
    return found->second;
  };
}

const LocalizedText refused{TextCatalog::assertionRefused, {std::int32_t{-3}}};

TEST(LocalizedTextTest, ResolvesThroughTheTranslationOrFallsBackToEnglishVerbatimWordsNeverAndIllFormedBytesRepaired) {
  const auto german = tableOf({{std::string(TextCatalog::assertionRefused.key()),
                                "macOS konnte deinen Mac nicht wach halten (IOKit-Fehler %d)."}});
  EXPECT_EQ(refused.resolved(german), "macOS konnte deinen Mac nicht wach halten (IOKit-Fehler -3).");

  const std::string english = "macOS couldn't keep your Mac awake (IOKit error -3).";
  EXPECT_EQ(refused.resolved(nullptr), english);
  EXPECT_EQ(refused.resolved(tableOf({{std::string(TextCatalog::assertionRefused.key()), "Fehler %@"}})), english);

  EXPECT_EQ(LocalizedText::verbatim("Cancel").resolved(tableOf({{"Cancel", "Abbrechen"}})), "Cancel");

  EXPECT_EQ(LocalizedText::verbatim("bad \xC3( byte").english(), "bad \xEF\xBF\xBD( byte");
  const LocalizedText text{TextCatalog::settingUnwritten, {std::string("\xFF")}};
  ASSERT_EQ(text.arguments().size(), 1u);
  EXPECT_EQ(std::get<std::string>(text.arguments()[0]), "\xEF\xBF\xBD");
}

// The key is the "other" wording; one process has its own.
TEST(LocalizedTextTest, ACountPicksItsWordingByTheLocalesPluralRules) {
  const LocalizedText text(TextCatalog::statusOnUntilProcessesEnd, {TextCount::of(1, "en_US")});
  EXPECT_EQ(text.resolved(testing::LanguageTables("en").lookup()), "On \u00B7 until 1 process ends");
}

}  // namespace
}  // namespace wakeloft
