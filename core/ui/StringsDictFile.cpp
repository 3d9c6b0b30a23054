#include "ui/StringsDictFile.h"

namespace wakeloft {

namespace {

const std::string* stringEntry(const PropertyList& list, std::string_view key) {
  const auto* entry = findEntry(list, key);
  return entry ? entry->get<std::string>() : nullptr;
}

std::optional<StringsDictFile::Forms> formsOf(const PropertyList& entry) {
  const auto* format = stringEntry(entry, "NSStringLocalizedFormatKey");
  if (!format) return std::nullopt;
  const auto start = format->find("%#@");
  const auto end = start == std::string::npos ? start : format->find('@', start + 3);
  if (end == std::string::npos || format->find("%#@", end) != std::string::npos) return std::nullopt;
  const auto name = format->substr(start + 3, end - start - 3);

  const auto* variable = findEntry(entry, name);
  const auto* type = variable ? stringEntry(*variable, "NSStringFormatSpecTypeKey") : nullptr;
  const auto* dictionary = variable ? variable->get<PropertyList::Dictionary>() : nullptr;
  if (!type || *type != "NSStringPluralRuleType" || !dictionary) return std::nullopt;

  StringsDictFile::Forms forms;
  for (const auto& [key, value] : *dictionary) {
    if (key.starts_with("NSStringFormat")) continue;
    const auto category = pluralCategoryNamed(key);
    const auto* words = value.get<std::string>();
    if (!category || !words) return std::nullopt;
    forms[*category] = format->substr(0, start) + *words + format->substr(end + 1);
  }
  if (!forms.contains(PluralCategory::other)) return std::nullopt;
  return forms;
}

}  // namespace

std::optional<StringsDictFile> StringsDictFile::from(const PropertyList& list) {
  const auto* entries = list.get<PropertyList::Dictionary>();
  if (!entries) return std::nullopt;
  StringsDictFile file;
  for (const auto& [key, entry] : *entries) {
    auto forms = formsOf(entry);
    if (!forms || file.entries_.contains(key)) return std::nullopt;
    file.entries_.emplace(key, std::move(*forms));
  }
  return file;
}

const std::string* StringsDictFile::find(std::string_view key, PluralCategory category) const {
  const auto entry = entries_.find(key);
  if (entry == entries_.end()) return nullptr;
  const auto form = entry->second.find(category);
  return form != entry->second.end() ? &form->second : &entry->second.at(PluralCategory::other);
}

}  // namespace wakeloft
