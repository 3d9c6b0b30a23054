#pragma once

#include <optional>
#include <string>

#include "base/PropertyList.h"

namespace wakeloft {

// What the running app's own bundle says about itself, through Core
// Foundation's bundle services.
namespace MainBundle {

// The information dictionary (the Info.plist with the entries the system
// adds), keeping only entries that are property-list values. Nothing when
// there is no main bundle or it cannot be read.
std::optional<PropertyList> infoDictionary();

// The first of the bundle's localisations in the user's order of
// preference, such as "de" or "zh-Hans".
std::optional<std::string> preferredLocalization();

// The bundle's absolute path with symbolic links resolved; nothing when
// there is no main bundle or its path does not resolve.
std::optional<std::string> realPath();

}  // namespace MainBundle
}  // namespace wakeloft
