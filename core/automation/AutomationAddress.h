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
// Printable ASCII only; the scheme in any case, the action in lower case;
// no user, port, path (a lone "/" aside) or fragment; each key of the action
// at most once and no other. A pid is above 1: 0 and 1 are the system's own.
namespace AutomationAddress {

inline constexpr std::string_view scheme = "wakeloft";
// Longer than any address the grammar allows.
inline constexpr std::size_t longest = 256;

std::variant<AutomationRequest, AutomationError> parse(std::string_view address);
// The address that parses back to `request`.
std::string write(const AutomationRequest& request);

}  // namespace AutomationAddress
}  // namespace wakeloft
