#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "automation/AutomationOutcomePublisher.h"
#include "automation/AutomationRequest.h"
#include "ui/Controllers.h"

namespace wakeloft {

// What the app does with a wakeloft:// address: what the panel's controls
// do, by the same paths, without showing anything. Deepwake goes through the
// switch's own path with its refusals; while the heat warning waits for the
// user, or when Deepwake cannot start, the panel is shown to say why. An
// address that cannot be read or followed changes nothing; the reason goes
// to the log, and what became of it (and later of each hold let go of while
// its process runs) to the command that sent it. Main thread only.
class AutomationHandler {
 public:
  AutomationHandler(Controllers controllers, std::function<void()> showPanel,
                    std::function<void(const std::string&)> log, std::shared_ptr<AutomationOutcomePublisher> outcomes);

  void open(std::string_view address);

 private:
  // Why the request was not followed, if it was not.
  std::optional<std::string> follow(const AutomationRequest& request);
  std::optional<std::string> turnOnDeepwake();

  Controllers controllers_;
  std::function<void()> showPanel_;
  std::function<void(const std::string&)> log_;
  std::shared_ptr<AutomationOutcomePublisher> outcomes_;
};

}  // namespace wakeloft
