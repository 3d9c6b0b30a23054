#pragma once

#include <string>

namespace wakeloft {

// Why an address, a duration or a command line cannot be followed, in one
// English sentence fragment for a log line or the terminal.
struct AutomationError {
  std::string reason;

  friend bool operator==(const AutomationError&, const AutomationError&) = default;
};

}  // namespace wakeloft
