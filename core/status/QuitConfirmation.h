#pragma once

#include <optional>

namespace wakeloft {

// The question asked before the app quits: whether to end the awake session,
// or Deepwake, with the time that is left; or no question at all.
class QuitConfirmation {
 public:
  enum class Kind { awakeMode, deepwake, quitNow };

  static QuitConfirmation awakeMode(std::optional<double> remaining, bool comesBack = true) {
    return {Kind::awakeMode, remaining, comesBack};
  }
  static QuitConfirmation deepwake(std::optional<double> remaining, bool comesBack = true) {
    return {Kind::deepwake, remaining, comesBack};
  }
  static QuitConfirmation quitNow() { return {Kind::quitNow, std::nullopt, false}; }

  // Deepwake is asked about even when the plain session is off. Time left is
  // told in whole minutes; under a full minute, or a time that is not finite,
  // is told as none.
  // `comesBack`: the next launch takes the session up again, as it does
  // unless the session is held only for processes, which may be gone by then.
  static QuitConfirmation asked(bool isAwakeOn, bool keepsLidClosedAwake, std::optional<double> remaining,
                                bool comesBack = true);

  Kind kind() const { return kind_; }
  // Seconds left in the timed session; always empty for `quitNow`.
  std::optional<double> remaining() const { return remaining_; }
  bool comesBack() const { return comesBack_; }

  friend bool operator==(const QuitConfirmation&, const QuitConfirmation&) = default;

 private:
  QuitConfirmation(Kind kind, std::optional<double> remaining, bool comesBack)
      : kind_(kind), remaining_(remaining), comesBack_(comesBack) {}

  Kind kind_;
  std::optional<double> remaining_;
  bool comesBack_;
};

}  // namespace wakeloft
