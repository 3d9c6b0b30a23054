#pragma once

#include <optional>
#include <string>

#include "base/Date.h"
#include "glyph/AwakeGlyph.h"
#include "prefs/AboutInfo.h"
#include "prefs/TimeZone.h"
#include "ui/LocalizedText.h"

namespace wakeloft {

// The About box, centred lines top to bottom.
struct AboutPopupContent {
  // Scales with the large-title text style.
  static constexpr double glyphPointSize = 26;

  AwakeGlyph glyph;
  LocalizedText name;
  // Nothing when the bundle says no version.
  std::optional<LocalizedText> version;
  LocalizedText copyright;

  // The holder named in the copyright line, set at build time.
  static std::string copyrightHolder();

  // The year is the one on the user's clocks at `now`.
  static AboutPopupContent current(const std::optional<AboutInfo>& about, Date now, const TimeZone& timeZone,
                                   const std::string& holder = copyrightHolder());

  friend bool operator==(const AboutPopupContent&, const AboutPopupContent&) = default;
};

}  // namespace wakeloft
