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

// One of the app's own tables, read from the source tree. Fails the test,
// and gives an empty table, when the file is missing or does not parse.
inline StringsFile loadTable(const std::string& language, TextTable table) {
  const auto path =
      std::string(WAKELOFT_APP_RESOURCES) + "/" + language + ".lproj/" + std::string(tableName(table)) + ".strings";
  try {
    if (const auto bytes = RegularFile::read(path, 1 << 20)) return StringsFile::parse(*bytes);
    ADD_FAILURE() << "cannot read " << path;
  } catch (const std::exception& error) {
    ADD_FAILURE() << path << ": " << error.what();
  }
  return StringsFile::parse("");
}

// A strings dictionary of the app's, such as "ar.lproj/Localizable"; empty
// when the file does not exist. Fails the test when it does not read as one.
inline StringsDictFile loadDictionary(const std::string& name) {
  const auto path = std::string(WAKELOFT_APP_RESOURCES) + "/" + name + ".stringsdict";
  try {
    const auto bytes = RegularFile::read(path, 1 << 20);
    if (!bytes) return *StringsDictFile::from(PropertyList::Dictionary{});
    const auto list = SystemPropertyListParser().parse(
        std::span(reinterpret_cast<const std::uint8_t*>(bytes->data()), bytes->size()));
    if (auto file = StringsDictFile::from(list)) return std::move(*file);
    ADD_FAILURE() << path << " is not a strings dictionary";
  } catch (const std::exception& error) {
    ADD_FAILURE() << path << ": " << error.what();
  }
  return *StringsDictFile::from(PropertyList::Dictionary{});
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
      const auto form = key.pluralForm();
      const auto* value = form ? (isDeepwake ? countedDeepwake : countedStandard).find(key.key(), *form)
                               : (isDeepwake ? deepwake : standard).find(key.key());
      return value ? std::optional(*value) : std::nullopt;
    };
  }

  StringsFile standard;
  StringsFile deepwake;
  StringsDictFile countedStandard;
  StringsDictFile countedDeepwake;
};

}  // namespace wakeloft::testing
