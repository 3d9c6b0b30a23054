#pragma once

#import <AppKit/AppKit.h>

#include <string>
#include <vector>

#include "glyph/LayoutDirection.h"

namespace wakeloft {

// The language this run of the app speaks and the direction it is laid out
// in, worked out once, on first use, from the main bundle's preferred
// localisations and the user's current locale. A change of the system
// language takes effect at the next launch.
namespace RunningAppLanguage {

LayoutDirection layoutDirection();
// AppKit's form of the same direction, for views, menus and alerts.
NSUserInterfaceLayoutDirection userInterfaceLayoutDirection();
// The interface's language with the user's regional formats, in the form
// the portable formatters take ("de_CH").
const std::string& locale();
// The main bundle's localisations in the user's order, the interface's
// language first.
const std::vector<std::string>& preferredLocalizations();

}  // namespace RunningAppLanguage
}  // namespace wakeloft
