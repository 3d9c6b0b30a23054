#pragma once

#include <optional>

#include "session/AwakeIntent.h"

namespace wakeloft {

// What a store hands back: a readable request, or a requested session whose
// saved deadline cannot be used.
class StoredAwakeIntent {
 public:
  static StoredAwakeIntent intent(AwakeIntent intent) { return StoredAwakeIntent(intent); }
  static StoredAwakeIntent unreadableDeadline() { return StoredAwakeIntent(std::nullopt); }

  bool isUnreadableDeadline() const { return !intent_; }
  // The request, when it is readable.
  const std::optional<AwakeIntent>& readable() const { return intent_; }

  friend bool operator==(const StoredAwakeIntent&, const StoredAwakeIntent&) = default;

 private:
  explicit StoredAwakeIntent(std::optional<AwakeIntent> intent) : intent_(intent) {}

  std::optional<AwakeIntent> intent_;
};

}  // namespace wakeloft
