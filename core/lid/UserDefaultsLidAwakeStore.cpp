#include "lid/UserDefaultsLidAwakeStore.h"

namespace wakeloft {

// The domain's own boolean reading: absent is false, and a value of another
// kind reads the way the platform reads it, without being rewritten.
bool UserDefaultsLidAwakeStore::hasAcknowledgedHeatWarning() const { return defaults_.boolean(key); }

void UserDefaultsLidAwakeStore::setHasAcknowledgedHeatWarning(bool acknowledged) { defaults_.set(key, acknowledged); }

}  // namespace wakeloft
