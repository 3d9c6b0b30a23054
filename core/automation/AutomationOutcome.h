#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>
#include <variant>

#include "automation/AutomationError.h"

namespace wakeloft {

// What the app did with an address, told back to the command that sent it:
// the command waits on it instead of guessing from the stores. It travels as
// one line:
//   KIND;id=ID;pid=PID;reason=REASON
// KIND is accepted, refused or released; ID is the address's id= (empty when
// it had none); PID is the held process for released and 0 otherwise; REASON
// runs to the end, is empty for accepted and says why otherwise. No control
// characters; at most `longest` bytes.
struct AutomationOutcome {
  enum class Kind {
    // The app followed the address.
    accepted,
    // The app did not follow it, for `reason`.
    refused,
    // The app no longer keeps the Mac awake for process `pid`, for `reason`:
    // a user stop, a start replacing the claim, a refusal. A process that
    // ended is not announced.
    released,
  };

  Kind kind = Kind::accepted;
  std::string requestId;
  pid_t pid = 0;
  // English, for the terminal.
  std::string reason;

  static constexpr std::size_t longest = 1024;

  // The line that parses back to this outcome; control characters in the
  // reason become spaces and a reason too long for the line is cut short.
  std::string encode() const;
  static std::variant<AutomationOutcome, AutomationError> parse(std::string_view line);

  friend bool operator==(const AutomationOutcome&, const AutomationOutcome&) = default;
};

}  // namespace wakeloft
