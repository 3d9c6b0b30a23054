#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace wakeloft {

// Where the command sits in the app: Wakeloft.app/Contents/Helpers/wakeloft.
// Addresses go to the copy of the app the command came with, not to
// whichever copy Launch Services picks.
namespace CommandBundle {

// The app bundle around the command at `executablePath`, a resolved
// absolute path (no links, no "." or ".."); nothing when it is not the
// Helpers of an .app's Contents.
std::optional<std::string> enclosingApp(std::string_view executablePath);

}  // namespace CommandBundle
}  // namespace wakeloft
