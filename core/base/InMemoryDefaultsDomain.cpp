#include "base/InMemoryDefaultsDomain.h"

#include <cctype>

namespace wakeloft {

std::optional<DefaultsValue> InMemoryDefaultsDomain::object(const std::string& key) const {
  if (const auto forced = forced_.find(key); forced != forced_.end()) return forced->second;
  const auto found = values_.find(key);
  if (found == values_.end()) return std::nullopt;
  return found->second;
}

void InMemoryDefaultsDomain::set(const std::string& key, DefaultsValue value) { values_.insert_or_assign(key, std::move(value)); }

void InMemoryDefaultsDomain::remove(const std::string& key) { values_.erase(key); }

bool InMemoryDefaultsDomain::boolean(const std::string& key) const {
  const auto value = object(key);
  if (!value) return false;
  if (const auto* b = value->get<bool>()) return *b;
  if (const auto number = value->number()) return *number != 0;
  if (const auto* text = value->get<std::string>()) {
    // Leading blanks, a sign and zeros are skipped; then Y, T or 1-9 is true.
    std::size_t i = 0;
    while (i < text->size() && std::isspace(static_cast<unsigned char>((*text)[i]))) ++i;
    if (i < text->size() && ((*text)[i] == '+' || (*text)[i] == '-')) ++i;
    while (i < text->size() && (*text)[i] == '0') ++i;
    if (i == text->size()) return false;
    const char c = (*text)[i];
    return c == 'Y' || c == 'y' || c == 'T' || c == 't' || (c >= '1' && c <= '9');
  }
  return false;
}

}  // namespace wakeloft
