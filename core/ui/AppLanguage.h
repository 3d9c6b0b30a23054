#pragma once

#include <string>
#include <vector>

#include "glyph/LayoutDirection.h"

namespace wakeloft {

// The language the interface speaks and the direction it is laid out in,
// from the bundle's preferred localisations (the languages the app has
// tables for, in the user's order). The app works both out once at launch;
// a change of the system language takes effect at the next one.
namespace AppLanguage {

// Right to left when the first preferred language writes that way; English
// when there is none.
LayoutDirection direction(const std::vector<std::string>& preferredLocalizations);

// The interface's language with the user's regional formats: `base` (the
// user's current locale) with the first preferred language put in, keeping
// that language's own region if it names one and `base`'s otherwise. `base`
// unchanged when there is no preferred language that can be read.
std::string resolvedLocale(const std::vector<std::string>& preferredLocalizations, const std::string& base);

}  // namespace AppLanguage
}  // namespace wakeloft
