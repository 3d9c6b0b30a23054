#include "session/UserDefaultsScreenOnStore.h"

#include "base/StrictDefaults.h"

namespace wakeloft {

bool UserDefaultsScreenOnStore::keepsScreenOn() {
  return StrictDefaults::readSwitch(defaults_, keepScreenOnKey, false);
}

}  // namespace wakeloft
