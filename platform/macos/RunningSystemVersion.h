#pragma once

#include "prefs/OperatingSystemVersion.h"

namespace wakeloft {

// The version of macOS this process runs on, as the process information
// reports it.
OperatingSystemVersion runningSystemVersion();

}  // namespace wakeloft
