// The tables in the app's resources against the texts the code can produce.

#include <gtest/gtest.h>

#include <cctype>
#include <set>
#include <string>
#include <string_view>

#include "AppTables.h"
#include "base/NumberWords.h"
#include "base/Utf8.h"
#include "ui/StringFormat.h"
#include "ui/TextCatalog.h"

namespace wakeloft {
namespace {

using testing::loadTable;

std::set<std::string> catalogKeys(TextTable table) {
  std::set<std::string> keys;
  for (const auto& key : TextCatalog::all()) {
    if (key.table() == table) keys.insert(std::string(key.key()));
  }
  return keys;
}

std::set<std::string> keysOf(const StringsFile& file) {
  std::set<std::string> keys;
  for (const auto& entry : file.entries()) keys.insert(entry.key);
  return keys;
}

TEST(TextTablesTest, TheCatalogsKeysAreDistinctWellFormedAndInEveryTableTranslatedAllButTheNames) {
  std::set<std::pair<std::string, TextTable>> seen;
  for (const auto& key : TextCatalog::all()) {
    EXPECT_TRUE(seen.emplace(std::string(key.key()), key.table()).second) << "listed twice: " << key.key();
    EXPECT_NE(StringFormat::conversions(key.key()), std::nullopt) << "malformed: " << key.key();
  }

  for (const auto table : allTextTables) {
    SCOPED_TRACE(std::string(tableName(table)));
    const auto file = loadTable("en", table);
    const auto expected = catalogKeys(table);
    const auto actual = keysOf(file);
    for (const auto& key : expected) EXPECT_TRUE(actual.contains(key)) << "missing: " << key;
    for (const auto& key : actual) EXPECT_TRUE(expected.contains(key)) << "produced by nothing: " << key;
    for (const auto& entry : file.entries()) EXPECT_EQ(entry.value, entry.key) << "line " << entry.line;
  }

  const std::set<std::string> names = {"Wakeloft", "Deepwake", "Version %@"};
  for (const std::string language : {"de", "ar"}) {
    for (const auto table : allTextTables) {
      SCOPED_TRACE(language + "/" + std::string(tableName(table)));
      const auto english = keysOf(loadTable("en", table));
      const auto file = loadTable(language, table);
      EXPECT_EQ(keysOf(file), english);
      for (const auto& entry : file.entries()) {
        EXPECT_FALSE(entry.value.empty()) << entry.key;
        const auto conversions = StringFormat::conversions(entry.value);
        EXPECT_NE(conversions, std::nullopt) << "malformed: " << entry.value;
        EXPECT_EQ(conversions, StringFormat::conversions(entry.key)) << entry.value;
        EXPECT_TRUE(entry.value != entry.key || names.contains(entry.key)) << "untranslated: " << entry.key;
      }
    }
  }
}

bool isArabicLetter(char32_t c) { return (c >= 0x0620 && c <= 0x064A) || (c >= 0x066E && c <= 0x06D3); }

// The direction AppKit gives a paragraph: that of its first strong letter.
// Digits, and so "%d", are weak and settle nothing; what an isolate holds
// does not count. "%@" ends the search undecided: its words may be English
// (the helper's reasons), so the text must settle its direction before it.
std::string paragraphDirection(std::string_view text) {
  int isolates = 0;
  while (!text.empty()) {
    if (text[0] == '%') {
      const auto end = text.find_first_of("%@d", 1);
      if (end == std::string_view::npos || text[end] == '@') return "undecided";
      text.remove_prefix(end + 1);
      continue;
    }
    const auto scalar = Utf8::front(text);
    text.remove_prefix(scalar.length);
    const char32_t c = scalar.value;
    if (c >= 0x2066 && c <= 0x2068) ++isolates;
    if (c == 0x2069 && isolates > 0) --isolates;
    if (isolates > 0) continue;
    if (isArabicLetter(c) || c == 0x200F || c == 0x061C) return "right to left";
    const bool latin =
        (c < 0x80 && std::isalpha(static_cast<int>(c))) || (c >= 0xC0 && c <= 0x24F && c != 0xD7 && c != 0xF7);
    if (latin || c == 0x200E) return "left to right";
  }
  return "undecided";
}

// Every text but a bare name lays out right to left.
TEST(TextTablesTest, ArabicTextsStartRightToLeft) {
  for (const auto table : allTextTables) {
    const auto file = loadTable("ar", table);
    for (const auto& entry : file.entries()) {
      if (entry.key == "Wakeloft" || entry.key == "Deepwake") continue;
      EXPECT_EQ(paragraphDirection(entry.value), "right to left") << entry.key;
    }
  }
}

// The categories the language's plural rules put whole numbers in.
std::set<PluralCategory> categoriesOf(const std::string& language) {
  std::set<PluralCategory> categories;
  for (int count = 0; count <= 1000; ++count) categories.insert(NumberWords::pluralCategory(count, language));
  return categories;
}

TEST(TextTablesTest, EveryCountedTextIsACatalogKeyWithAWordingForEachPluralCategoryOfItsLanguage) {
  for (const std::string language : {"en", "de", "ar"}) {
    SCOPED_TRACE(language);
    const auto categories = categoriesOf(language);
    for (const auto table : allTextTables) {
      const auto strings = loadTable(language, table);
      const auto dictionary = testing::loadDictionary(language + ".lproj/" + std::string(tableName(table)));
      for (const auto& [key, forms] : dictionary.entries()) {
        EXPECT_TRUE(catalogKeys(table).contains(key) && strings.find(key)) << "not a key of its table: " << key;
        EXPECT_EQ(StringFormat::conversions(key), std::vector{StringFormat::Conversion::number}) << key;
        std::set<PluralCategory> found;
        for (const auto& [category, words] : forms) {
          found.insert(category);
          EXPECT_NE(StringFormat::formatted(words, {{TextCount::of(5, language)}}), std::nullopt) << words;
        }
        EXPECT_EQ(found, categories) << key;
      }
    }
    // The probe the Mac's plural rules are asked through answers each
    // category with its own name.
    const auto probe = testing::loadDictionary(language + ".lproj/PluralCategory");
    for (const auto category : allPluralCategories) {
      const auto* words = probe.find("%lld", category);
      ASSERT_TRUE(words);
      EXPECT_EQ(*words, pluralCategoryName(categories.contains(category) ? category : PluralCategory::other));
    }
  }
}

}  // namespace
}  // namespace wakeloft
