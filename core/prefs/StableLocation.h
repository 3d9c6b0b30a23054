#pragma once

#include <span>
#include <string>
#include <string_view>

namespace wakeloft {

// Whether an app bundle sits where a login-item registration keeps finding
// it: inside one of the Applications folders, at any depth.
namespace StableLocation {

// `bundlePath` with symbolic links already resolved; both sides are
// standardised here ("." and ".." folded, repeated and trailing slashes
// dropped). A folder counts only as a whole path component, so a folder
// named "Applications Old" is not inside "Applications". Relative paths are
// never stable.
bool isInside(std::string_view bundlePath, std::span<const std::string> applicationsFolders);

// The lexical standard form of an absolute path; empty for a relative or
// empty one.
std::string standardized(std::string_view path);

}  // namespace StableLocation
}  // namespace wakeloft
