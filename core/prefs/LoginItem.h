#pragma once

#include "prefs/LoginItemState.h"

namespace wakeloft {

// The system's login-item service for this app. The system, not the app,
// knows whether the app opens at login. Main thread only.
class LoginItem {
 public:
  virtual ~LoginItem() = default;

  virtual LoginItemState state() const = 0;
  // The app runs from an Applications folder, so a registration keeps
  // pointing at it.
  virtual bool isAtStableLocation() const = 0;
  // Both throw the system's own error when the system refuses.
  virtual void registerItem() = 0;
  virtual void unregisterItem() = 0;
};

}  // namespace wakeloft
