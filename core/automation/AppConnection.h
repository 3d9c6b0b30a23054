#pragma once

#include <string>

#include "base/DefaultsDomain.h"

namespace wakeloft {

// The command's way to the app.
class AppConnection {
 public:
  virtual ~AppConnection() = default;

  virtual bool isAppRunning() const = 0;
  // Hands a checked address to the app, which is launched in the background
  // when it is not running, and returns once the system has delivered it.
  // Throws std::runtime_error with the reason when it cannot.
  virtual void open(const std::string& address) = 0;
  // The app's own preferences, where its stores keep its state.
  virtual DefaultsDomain& appDefaults() = 0;
};

}  // namespace wakeloft
