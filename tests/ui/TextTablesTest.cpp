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

}  // namespace
}  // namespace wakeloft
