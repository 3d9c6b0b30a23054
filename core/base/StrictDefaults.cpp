#include "base/StrictDefaults.h"

namespace wakeloft::StrictDefaults {

void removeUnlessForced(DefaultsDomain& defaults, const std::string& key) {
  if (!defaults.isForced(key)) defaults.remove(key);
}

bool readSwitch(DefaultsDomain& defaults, const std::string& key, bool fallback) {
  const auto value = defaults.object(key);
  if (!value) return fallback;
  if (const bool* on = value->get<bool>()) return *on;
  removeUnlessForced(defaults, key);
  return fallback;
}

}  // namespace wakeloft::StrictDefaults
