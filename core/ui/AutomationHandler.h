#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "ui/Controllers.h"

namespace wakeloft {

// What the app does with a wakeloft:// address: what the panel's controls
// do, by the same paths, without showing anything. Deepwake goes through the
// switch's own path with its refusals; while the heat warning waits for the
// user, or when Deepwake cannot start, the panel is shown to say why and
// nothing is switched on. An address that cannot be read or followed
// changes nothing; the reason goes to the log. Main thread only.
class AutomationHandler {
 public:
  AutomationHandler(Controllers controllers, std::function<void()> showPanel,
                    std::function<void(const std::string&)> log);

  void open(std::string_view address);

 private:
  void turnOnDeepwake();

  Controllers controllers_;
  std::function<void()> showPanel_;
  std::function<void(const std::string&)> log_;
};

}  // namespace wakeloft
