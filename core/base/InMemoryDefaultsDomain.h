#pragma once

#include <map>

#include "base/DefaultsDomain.h"

namespace wakeloft {

// A defaults domain held in memory, for tests and previews. Its boolean
// reading follows the platform's: numbers are true when not zero, strings
// by their first significant character.
class InMemoryDefaultsDomain final : public DefaultsDomain {
 public:
  std::optional<DefaultsValue> object(const std::string& key) const override;
  void set(const std::string& key, DefaultsValue value) override;
  void remove(const std::string& key) override;
  bool boolean(const std::string& key) const override;

  const std::map<std::string, DefaultsValue>& values() const { return values_; }

 private:
  std::map<std::string, DefaultsValue> values_;
};

}  // namespace wakeloft
