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
// switch's own path with its refusals, once the user has allowed scripts to
// turn it on; while that question or the heat warning waits for the user, or
// when Deepwake cannot start, the panel is shown to say why. An
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
  // For a hold, `heldPid` is the held process: a request that waited for
  // the user's consent is dropped if that hold has gone meanwhile.
  std::optional<std::string> turnOnDeepwake(std::optional<pid_t> heldPid = std::nullopt);
  // What allowing scripts to turn Deepwake on carries out.
  std::function<void()> whenAllowed(std::optional<pid_t> heldPid) const;

  Controllers controllers_;
  std::function<void()> showPanel_;
  std::function<void(const std::string&)> log_;
  std::shared_ptr<AutomationOutcomePublisher> outcomes_;
};

}  // namespace wakeloft
