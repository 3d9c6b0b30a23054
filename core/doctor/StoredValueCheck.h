#pragma once

#include <string>
#include <vector>

#include "base/DefaultsDomain.h"
#include "lid/DeepwakeGuardrails.h"

namespace wakeloft {

// Which of the app's stored values its own stores could not read, judged by
// those stores' rules. Some stores clean a bad value as they read it; here
// they read a copy, so looking never changes the app's defaults.
namespace StoredValueCheck {

// The guardrail settings as the app reads them, read on a copy.
DeepwakeGuardrails::Settings guardrailSettings(const DefaultsDomain& defaults);

// Reads `defaults` only.
std::vector<std::string> unreadableKeys(DefaultsDomain& defaults);

}  // namespace StoredValueCheck
}  // namespace wakeloft
