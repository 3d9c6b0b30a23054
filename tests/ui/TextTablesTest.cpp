// The tables in the app's resources against the texts the code can produce.

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "AppTables.h"
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

TEST(TextTablesTest, CatalogKeysAreDistinctAndWellFormed) {
  std::set<std::pair<std::string, TextTable>> seen;
  for (const auto& key : TextCatalog::all()) {
    EXPECT_TRUE(seen.emplace(std::string(key.key()), key.table()).second) << "listed twice: " << key.key();
    EXPECT_NE(StringFormat::conversions(key.key()), std::nullopt) << "malformed: " << key.key();
  }
}

TEST(TextTablesTest, EnglishTablesHoldExactlyTheCatalogInItsOwnWords) {
  for (const auto table : allTextTables) {
    SCOPED_TRACE(std::string(tableName(table)));
    const auto file = loadTable("en", table);
    const auto expected = catalogKeys(table);
    const auto actual = keysOf(file);
    for (const auto& key : expected) EXPECT_TRUE(actual.contains(key)) << "missing: " << key;
    for (const auto& key : actual) EXPECT_TRUE(expected.contains(key)) << "produced by nothing: " << key;
    for (const auto& entry : file.entries()) EXPECT_EQ(entry.value, entry.key) << "line " << entry.line;
  }
}

TEST(TextTablesTest, TranslationsHaveExactlyTheEnglishKeysAndPlaceholders) {
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
      }
    }
  }
}

// The names stay as they are; everything else is translated.
TEST(TextTablesTest, TranslationsLeaveOnlyTheNamesInEnglish) {
  const std::set<std::string> names = {"Wakeloft", "Deepwake", "Version %@"};
  for (const std::string language : {"de", "ar"}) {
    for (const auto table : allTextTables) {
      const auto file = loadTable(language, table);
      for (const auto& entry : file.entries()) {
        if (entry.value == entry.key) {
          EXPECT_TRUE(names.contains(entry.key)) << language << ": " << entry.key;
        }
      }
    }
  }
}

bool hasArabicLetters(const std::string& text) {
  // U+0600 to U+06FF are the bytes D8 80 to DB BF in UTF-8.
  for (std::size_t i = 0; i + 1 < text.size(); ++i) {
    const auto lead = static_cast<unsigned char>(text[i]);
    if (lead >= 0xD8 && lead <= 0xDB) return true;
  }
  return false;
}

TEST(TextTablesTest, ArabicSentencesAreWrittenInArabic) {
  for (const auto table : allTextTables) {
    const auto file = loadTable("ar", table);
    for (const auto& entry : file.entries()) {
      if (entry.key != "Wakeloft" && entry.key != "Deepwake") {
        EXPECT_TRUE(hasArabicLetters(entry.value)) << entry.key;
      }
    }
  }
}

}  // namespace
}  // namespace wakeloft
