#pragma once

#include <optional>

#include "session/AwakeIntentStore.h"

namespace wakeloft {

class InMemoryAwakeIntentStore final : public AwakeIntentStore {
 public:
  explicit InMemoryAwakeIntentStore(StoredAwakeIntent initial = StoredAwakeIntent::intent(AwakeIntent::off()))
      : stored(initial) {}
  // The date is not checked.
  InMemoryAwakeIntentStore(bool isAwakeRequested, std::optional<Date> awakeUntil)
      : stored(!isAwakeRequested ? StoredAwakeIntent::intent(AwakeIntent::off())
               : awakeUntil      ? StoredAwakeIntent::intent(AwakeIntent::until(*awakeUntil))
                                 : StoredAwakeIntent::intent(AwakeIntent::indefinite())) {}

  StoredAwakeIntent load() const override { return stored; }
  void save(const AwakeIntent& intent) override { stored = StoredAwakeIntent::intent(intent); }

  // An unreadable deadline counts as requested.
  bool isAwakeRequested() const { return stored != StoredAwakeIntent::intent(AwakeIntent::off()); }
  std::optional<Date> awakeUntil() const { return stored.readable() ? stored.readable()->date() : std::nullopt; }

  StoredAwakeIntent stored;
};

}  // namespace wakeloft
