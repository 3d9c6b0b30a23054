#pragma once

#include <string>
#include <variant>

#include "lease/LidLeaseStatus.h"

namespace wakeloft {

// Asks the lid helper over its mach service how the setting and its lease
// stand, as the app's command may: the helper must meet `helperRequirement`.
// Waits on the calling thread for at most `timeout` seconds; the status, or
// why there is none.
namespace XPCLidHelperStatus {

std::variant<LidLeaseStatus, std::string> ask(const std::string& helperRequirement, double timeout);

}  // namespace XPCLidHelperStatus
}  // namespace wakeloft
