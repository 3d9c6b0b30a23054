#pragma once

#include "lid/AppServiceStatus.h"

namespace wakeloft {

// Whether the system opens the app at login.
enum class LoginItemState {
  enabled,
  disabled,
  // Registered, but the user has to allow it in the login-item settings.
  requiresApproval,
};

// The raw status ServiceManagement reports for the app's login item. Not
// registered, not found and any value a later system adds all read as
// disabled: the switch is off and turning it on registers again.
constexpr LoginItemState loginItemState(long appServiceStatus) {
  switch (appServiceStatus) {
    case AppServiceStatus::enabled: return LoginItemState::enabled;
    case AppServiceStatus::requiresApproval: return LoginItemState::requiresApproval;
    default: return LoginItemState::disabled;
  }
}

}  // namespace wakeloft
