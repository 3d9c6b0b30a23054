#pragma once

#include <optional>
#include <string>

#include "base/Date.h"
#include "base/PropertyList.h"
#include "prefs/TimeZone.h"

namespace wakeloft {

// The version of the app as the About box shows it and feedback carries it,
// from the bundle's information dictionary.
struct AboutInfo {
  // "CFBundleShortVersionString"; never empty.
  std::string version;
  // "CFBundleVersion"; empty when the bundle has none.
  std::string build;

  // Nothing without a dictionary or without a non-empty version text in it.
  static std::optional<AboutInfo> fromInfoDictionary(const std::optional<PropertyList>& infoDictionary);

  // "1.4 (212)"; the version alone when the build adds nothing.
  std::string formattedVersion() const;

  // The Gregorian year at `date` on the clocks of `timeZone`, so it turns
  // at local midnight on New Year.
  static int copyrightYear(Date date, const TimeZone& timeZone);

  friend bool operator==(const AboutInfo&, const AboutInfo&) = default;
};

}  // namespace wakeloft
