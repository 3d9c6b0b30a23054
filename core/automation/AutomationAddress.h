#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "automation/AutomationError.h"
#include "automation/AutomationRequest.h"

namespace wakeloft {

// The wakeloft:// addresses, read strictly by the app and checked by the
// command before it sends one:
//   wakeloft://start[?for=DURATION]   wakeloft://stop   wakeloft://toggle
//   wakeloft://deepwake?on=1|0        wakeloft://hold?pid=N[&for=DURATION][&deepwake=1|0]
// Any of them may end in &id=ID (or ?id=ID): 1 to 36 letters, digits or
// hyphens that the app's answer names (see AutomationOutcome).
// Printable ASCII only; the scheme and the action in any case (written in
// lower case); no user, port, path (a lone "/" aside) or fragment; each key
// of the action at most once and no other. A pid is above 1: 0 and 1 are the
// system's own.
namespace AutomationAddress {

inline constexpr std::string_view scheme = "wakeloft";
// Longer than any address the grammar allows.
inline constexpr std::size_t longest = 256;
// A UUID's length.
inline constexpr std::size_t longestRequestID = 36;

std::variant<AutomationRequest, AutomationError> parse(std::string_view address);
// Whether `text` is an id= value.
bool isRequestID(std::string_view text);
// The address that parses back to `request`.
std::string write(const AutomationRequest& request);

}  // namespace AutomationAddress
}  // namespace wakeloft
