#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "base/RegularFile.h"
#include "support/SystemPropertyListParser.h"
#include "ui/LocalizedText.h"
#include "ui/StringsDictFile.h"
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

// A strings dictionary of the app's, such as "ar.lproj/Localizable"; empty
// when the file does not exist. Fails the test when it does not read as one.
inline StringsDictFile loadDictionary(const std::string& name) {
  const auto path = std::string(WAKELOFT_APP_RESOURCES) + "/" + name + ".stringsdict";
  const auto empty = *StringsDictFile::from(PropertyList::Dictionary{});
  const auto bytes = RegularFile::read(path, 1 << 20);
  if (!bytes) return empty;
  try {
    const auto list = SystemPropertyListParser().parse(
        std::span(reinterpret_cast<const std::uint8_t*>(bytes->data()), bytes->size()));
    if (auto file = StringsDictFile::from(list)) return std::move(*file);
  } catch (const std::exception& error) {
    ADD_FAILURE() << path << ": " << error.what();
    return empty;
  }
  ADD_FAILURE() << path << " is not a strings dictionary";
  return empty;
}

// Looks texts up in one language's tables, as the bundle would.
struct LanguageTables {
  explicit LanguageTables(const std::string& language)
      : standard(loadTable(language, TextTable::standard)),
        deepwake(loadTable(language, TextTable::deepwake)),
        countedStandard(loadDictionary(language + ".lproj/Localizable")),
        countedDeepwake(loadDictionary(language + ".lproj/Deepwake")) {}

  TextLookup lookup() const {
    return [this](TextKey key) -> std::optional<std::string> {
      const bool isDeepwake = key.table() == TextTable::deepwake;
      if (const auto form = key.pluralForm()) {
        if (const auto* value = (isDeepwake ? countedDeepwake : countedStandard).find(key.key(), *form)) return *value;
        return std::nullopt;
      }
      if (const auto* value = (isDeepwake ? deepwake : standard).find(key.key())) return *value;
      return std::nullopt;
    };
  }

  StringsFile standard;
  StringsFile deepwake;
  StringsDictFile countedStandard;
  StringsDictFile countedDeepwake;
};

}  // namespace wakeloft::testing
