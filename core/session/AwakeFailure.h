#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <type_traits>
#include <variant>

#include "lease/LidHelperRefusal.h"

namespace wakeloft {

// Why keeping awake failed: the one failure type of the awake, lid and
// login-item controllers, which the panel puts into words.
class AwakeFailure {
 public:
  struct AssertionRefused {
    std::int32_t code;
    friend bool operator==(const AssertionRefused&, const AssertionRefused&) = default;
  };
  struct LidHelperRefused {
    LidHelperRefusal refusal;
    friend bool operator==(const LidHelperRefused&, const LidHelperRefused&) = default;
  };
  struct Reported {
    std::string message;
    friend bool operator==(const Reported&, const Reported&) = default;
  };
  struct LidHelperUnavailable {
    friend bool operator==(const LidHelperUnavailable&, const LidHelperUnavailable&) = default;
  };
  struct LidHelperRequiresApproval {
    friend bool operator==(const LidHelperRequiresApproval&, const LidHelperRequiresApproval&) = default;
  };
  using Case = std::variant<AssertionRefused, LidHelperRefused, Reported, LidHelperUnavailable, LidHelperRequiresApproval>;

  template <typename T>
    requires std::is_constructible_v<Case, T>
  AwakeFailure(T value) : value_(std::move(value)) {}

  // Total: SleepBlockerError, then LidSleepBlockerError, then any other error
  // by its own description.
  static AwakeFailure from(const std::exception& error);
  static AwakeFailure from(const std::exception_ptr& error);

  const Case& value() const { return value_; }
  template <typename T>
  const T* as() const { return std::get_if<T>(&value_); }

  friend bool operator==(const AwakeFailure&, const AwakeFailure&) = default;

 private:
  Case value_;
};

}  // namespace wakeloft
