#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "base/RegularFile.h"
#include "ui/LocalizedText.h"
#include "ui/StringsFile.h"
#include "ui/TextTable.h"

namespace wakeloft::testing {

// The app's own tables, read from the source tree.
inline std::string tablePath(const std::string& language, TextTable table) {
  return std::string(WAKELOFT_APP_RESOURCES) + "/" + language + ".lproj/" + std::string(tableName(table)) + ".strings";
}

// Fails the test, and gives an empty table, when the file is missing or
// does not parse.
inline StringsFile loadTable(const std::string& language, TextTable table) {
  const auto path = tablePath(language, table);
  const auto bytes = RegularFile::read(path, 1 << 20);
  if (!bytes) {
    ADD_FAILURE() << "cannot read " << path;
    return StringsFile::parse("");
  }
  try {
    return StringsFile::parse(*bytes);
  } catch (const std::exception& error) {
    ADD_FAILURE() << path << ": " << error.what();
    return StringsFile::parse("");
  }
}

// Looks texts up in one language's tables, as the bundle would.
struct LanguageTables {
  explicit LanguageTables(const std::string& language)
      : standard(loadTable(language, TextTable::standard)), deepwake(loadTable(language, TextTable::deepwake)) {}

  TextLookup lookup() const {
    return [this](TextKey key) -> std::optional<std::string> {
      const auto& file = key.table() == TextTable::deepwake ? deepwake : standard;
      if (const auto* value = file.find(key.key())) return *value;
      return std::nullopt;
    };
  }

  StringsFile standard;
  StringsFile deepwake;
};

}  // namespace wakeloft::testing
