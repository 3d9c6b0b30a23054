#pragma once

#include <string_view>

#include "base/DefaultsDomain.h"

namespace wakeloft {

// A property-list value of any depth. The defaults domain holds exactly the
// same kinds, so one value type serves both; a dictionary keeps its entries
// in the order they were added or read.
using PropertyList = DefaultsValue;

// The value under a key when `list` is a dictionary that has it; the first
// one if a malformed list repeats the key.
inline const PropertyList* findEntry(const PropertyList& list, std::string_view key) {
  const auto* entries = list.get<PropertyList::Dictionary>();
  if (!entries) return nullptr;
  for (const auto& [entryKey, entryValue] : *entries) {
    if (entryKey == key) return &entryValue;
  }
  return nullptr;
}

}  // namespace wakeloft
