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

}  // namespace
}  // namespace wakeloft
