#pragma once

#include <functional>
#include <optional>

#include "base/Date.h"

namespace wakeloft {

// Which sentence the panel puts under its status line.
class AwakeExplanation {
 public:
  enum class Case {
    sleepsNormally,
    awakeIndefinitely,
    awakeUntilSessionEnds,
    awakeWithLidClosedIndefinitely,
    awakeWithLidClosedUntilSessionEnds,
  };
  using enum Case;

  constexpr AwakeExplanation(Case value) : value_(value) {}

  // Off is off, whatever deadline or lid flag is left over.
  static AwakeExplanation describing(bool isOn, std::optional<Date> activeUntil, bool keepsLidClosedAwake);

  constexpr Case value() const { return value_; }

  friend constexpr bool operator==(AwakeExplanation, AwakeExplanation) = default;

 private:
  Case value_;
};

}  // namespace wakeloft

template <>
struct std::hash<wakeloft::AwakeExplanation> {
  std::size_t operator()(wakeloft::AwakeExplanation e) const noexcept {
    return std::hash<wakeloft::AwakeExplanation::Case>{}(e.value());
  }
};
