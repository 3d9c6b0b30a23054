#pragma once

#include <map>

#include "base/DefaultsDomain.h"

namespace wakeloft {

// A defaults domain held in memory, for tests and previews. Its boolean
// reading follows the platform's: numbers are true when not zero, strings
// by their first significant character. Profiles can be forced on it.
class InMemoryDefaultsDomain final : public DefaultsDomain {
 public:
  std::optional<DefaultsValue> object(const std::string& key) const override;
  void set(const std::string& key, DefaultsValue value) override;
  void remove(const std::string& key) override;
  bool boolean(const std::string& key) const override;
  bool isForced(const std::string& key) const override { return forced_.contains(key); }

  // As a profile does: read before the user's own value, which `set` and
  // `remove` still change underneath.
  void force(const std::string& key, DefaultsValue value) { forced_.insert_or_assign(key, std::move(value)); }
  void unforce(const std::string& key) { forced_.erase(key); }

  // The user's own values.
  const std::map<std::string, DefaultsValue>& values() const { return values_; }

 private:
  std::map<std::string, DefaultsValue> values_;
  std::map<std::string, DefaultsValue> forced_;
};

}  // namespace wakeloft
