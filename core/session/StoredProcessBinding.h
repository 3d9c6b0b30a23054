#pragma once

#include <optional>

#include "session/SessionClaims.h"

namespace wakeloft {

// What a binding store hands back: no binding, the claims on a session held
// for processes, or a record that cannot be read.
class StoredProcessBinding {
 public:
  static StoredProcessBinding none() { return StoredProcessBinding(std::nullopt, false); }
  static StoredProcessBinding bound(SessionClaims claims) { return StoredProcessBinding(std::move(claims), false); }
  static StoredProcessBinding unreadable() { return StoredProcessBinding(std::nullopt, true); }

  bool isUnreadable() const { return unreadable_; }
  // The claims, when a readable binding is stored; they hold a process.
  const std::optional<SessionClaims>& claims() const { return claims_; }

  friend bool operator==(const StoredProcessBinding&, const StoredProcessBinding&) = default;

 private:
  StoredProcessBinding(std::optional<SessionClaims> claims, bool unreadable)
      : claims_(std::move(claims)), unreadable_(unreadable) {}

  std::optional<SessionClaims> claims_;
  bool unreadable_;
};

}  // namespace wakeloft
