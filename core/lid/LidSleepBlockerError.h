#pragma once

#include <string>

#include "base/BridgedError.h"

namespace wakeloft {

// What went wrong between the app and the lid helper.
class LidSleepBlockerError : public BridgedError {
 public:
  enum class Kind { helperRefused, helperUnavailable, helperRequiresApproval };

  // The reason is the helper's refusal text, passed through unchanged.
  static LidSleepBlockerError helperRefused(std::string reason) {
    return LidSleepBlockerError(Kind::helperRefused, std::move(reason));
  }
  static LidSleepBlockerError helperUnavailable() { return LidSleepBlockerError(Kind::helperUnavailable, {}); }
  static LidSleepBlockerError helperRequiresApproval() {
    return LidSleepBlockerError(Kind::helperRequiresApproval, {});
  }

  Kind kind() const { return kind_; }
  const std::string& reason() const { return reason_; }

  friend bool operator==(const LidSleepBlockerError& a, const LidSleepBlockerError& b) {
    return a.kind_ == b.kind_ && a.reason_ == b.reason_;
  }

 private:
  LidSleepBlockerError(Kind kind, std::string reason)
      : BridgedError("WakeloftCore.LidSleepBlockerError", static_cast<long>(kind)),
        kind_(kind),
        reason_(std::move(reason)) {}

  Kind kind_;
  std::string reason_;
};

}  // namespace wakeloft
