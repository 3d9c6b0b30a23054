#include "session/UserDefaultsAwakeIntentStore.h"

namespace wakeloft {

StoredAwakeIntent UserDefaultsAwakeIntentStore::load() const {
  if (!defaults_.boolean(isAwakeRequestedKey)) return StoredAwakeIntent::intent(AwakeIntent::off());
  const auto object = defaults_.object(awakeUntilKey);
  if (!object) return StoredAwakeIntent::intent(AwakeIntent::indefinite());
  // Only a number that is not a boolean is a deadline; whether it has passed
  // is the controller's call.
  const auto seconds = object->number();
  if (!seconds) return StoredAwakeIntent::unreadableDeadline();
  const Date date{*seconds};
  if (!AwakeIntent::isUsable(date)) return StoredAwakeIntent::unreadableDeadline();
  return StoredAwakeIntent::intent(AwakeIntent::until(date));
}

void UserDefaultsAwakeIntentStore::save(const AwakeIntent& intent) {
  switch (intent.kind()) {
    case AwakeIntent::Kind::until:
      defaults_.set(awakeUntilKey, intent.date()->secondsSince1970);
      defaults_.set(isAwakeRequestedKey, true);
      break;
    case AwakeIntent::Kind::indefinite:
      defaults_.remove(awakeUntilKey);
      defaults_.set(isAwakeRequestedKey, true);
      break;
    case AwakeIntent::Kind::off:
      // The deadline is left in place on purpose: load() never reads it while
      // nothing is requested, and the next request overwrites or removes it.
      defaults_.remove(isAwakeRequestedKey);
      break;
  }
}

}  // namespace wakeloft
