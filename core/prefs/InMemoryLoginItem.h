#pragma once

#include <exception>
#include <optional>
#include <utility>

#include "prefs/LoginItem.h"

namespace wakeloft {

// A login item with no system behind it, for previews and tests. Registering
// enables it and unregistering disables it; a test can have the system ask
// for approval instead, or refuse the next call.
class InMemoryLoginItem final : public LoginItem {
 public:
  InMemoryLoginItem(LoginItemState state, bool isAtStableLocation)
      : state_(state), isAtStableLocation_(isAtStableLocation) {}

  LoginItemState state() const override { return state_; }
  bool isAtStableLocation() const override { return isAtStableLocation_; }

  void registerItem() override {
    ++registerCount;
    if (auto error = std::exchange(nextRegistrationError, nullptr)) std::rethrow_exception(error);
    state_ = stateAfterRegistering.value_or(LoginItemState::enabled);
  }
  void unregisterItem() override {
    ++unregisterCount;
    if (auto error = std::exchange(nextUnregistrationError, nullptr)) std::rethrow_exception(error);
    state_ = LoginItemState::disabled;
  }

  // What the user does in the system settings meanwhile.
  void setState(LoginItemState state) { state_ = state; }
  void setIsAtStableLocation(bool stable) { isAtStableLocation_ = stable; }

  // What a registration ends in; enabled when not set.
  std::optional<LoginItemState> stateAfterRegistering;
  // Each is thrown by the next call of its kind, which then changes nothing.
  std::exception_ptr nextRegistrationError;
  std::exception_ptr nextUnregistrationError;
  // Calls, refused ones included.
  int registerCount = 0;
  int unregisterCount = 0;

 private:
  LoginItemState state_;
  bool isAtStableLocation_;
};

}  // namespace wakeloft
