#pragma once

#include <string_view>

namespace wakeloft {

// App Translocation: macOS runs a quarantined app opened where it was
// downloaded from a read-only copy in a random folder. Sparkle cannot update
// such a copy, and a helper registered from it would point at a path that
// disappears; the app must be moved to Applications first. The system's
// SecTranslocate calls have no public header, so the copy is told by its
// path.
namespace Translocation {

// Whether the bundle at `realBundlePath` (symbolic links resolved, absolute)
// runs translocated: a folder of its path is named "AppTranslocation".
bool isTranslocated(std::string_view realBundlePath);

}  // namespace Translocation
}  // namespace wakeloft
