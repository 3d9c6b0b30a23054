#pragma once

#include <string>

#include "base/DefaultsDomain.h"

namespace wakeloft {

// How the stores read the app's own values: strictly. A value of another
// kind than the one written reads as the default and is removed, so that the
// next launch does not trip over it again; a value a configuration profile
// forces is the administrator's, read as it is and never removed.
namespace StrictDefaults {

void removeUnlessForced(DefaultsDomain& defaults, const std::string& key);
// The boolean under `key`, or `fallback` when there is none or another kind
// of value.
bool readSwitch(DefaultsDomain& defaults, const std::string& key, bool fallback);

}  // namespace StrictDefaults
}  // namespace wakeloft
