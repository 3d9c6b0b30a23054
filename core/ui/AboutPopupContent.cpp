#include "ui/AboutPopupContent.h"

#include "ui/TextCatalog.h"

#ifndef WAKELOFT_COPYRIGHT_HOLDER
#error "WAKELOFT_COPYRIGHT_HOLDER must name the copyright holder; the build sets it."
#endif

namespace wakeloft {

std::string AboutPopupContent::copyrightHolder() { return WAKELOFT_COPYRIGHT_HOLDER; }

AboutPopupContent AboutPopupContent::current(const std::optional<AboutInfo>& about, Date now,
                                             const TimeZone& timeZone, const std::string& holder) {
  std::optional<LocalizedText> version;
  if (about) version = LocalizedText(TextCatalog::version, {about->formattedVersion()});
  // A sign, a number and a name: nothing to translate, and the year keeps
  // its usual digits in every language.
  auto copyright =
      LocalizedText::verbatim("\u00A9 " + std::to_string(AboutInfo::copyrightYear(now, timeZone)) + " " + holder);
  return {AwakeGlyph(AwakeGlyph::Vessel::mug, true), TextCatalog::wakeloft, std::move(version), std::move(copyright)};
}

}  // namespace wakeloft
