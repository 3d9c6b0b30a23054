#include "session/UserDefaultsScreenOnStore.h"

namespace wakeloft {

bool UserDefaultsScreenOnStore::keepsScreenOn() {
  const auto value = defaults_.object(keepScreenOnKey);
  if (!value) return false;
  if (const bool* on = value->get<bool>()) return *on;
  defaults_.remove(keepScreenOnKey);
  return false;
}

}  // namespace wakeloft
