#pragma once

#include <optional>

namespace wakeloft {

// The question asked before the app quits: whether to end the awake session,
// or Deepwake, with the time that is left; or no question at all.
class QuitConfirmation {
 public:
  enum class Kind { awakeMode, deepwake, quitNow };

  static QuitConfirmation awakeMode(std::optional<double> remaining) { return {Kind::awakeMode, remaining}; }
  static QuitConfirmation deepwake(std::optional<double> remaining) { return {Kind::deepwake, remaining}; }
  static QuitConfirmation quitNow() { return {Kind::quitNow, std::nullopt}; }

  // Deepwake is asked about even when the plain session is off. Time left is
  // told in whole minutes; under a full minute, or a time that is not finite,
  // is told as none.
  static QuitConfirmation asked(bool isAwakeOn, bool keepsLidClosedAwake, std::optional<double> remaining);

  Kind kind() const { return kind_; }
  // Seconds left in the timed session; always empty for `quitNow`.
  std::optional<double> remaining() const { return remaining_; }

  friend bool operator==(const QuitConfirmation&, const QuitConfirmation&) = default;

 private:
  QuitConfirmation(Kind kind, std::optional<double> remaining) : kind_(kind), remaining_(remaining) {}

  Kind kind_;
  std::optional<double> remaining_;
};

}  // namespace wakeloft
