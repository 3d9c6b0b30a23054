#include "prefs/AboutInfo.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace wakeloft {

namespace {

// The proleptic Gregorian year of a day counted from 1970-01-01, by the
// era arithmetic of 400-year cycles (146097 days each), with years taken to
// begin on 1 March so that the leap day falls last.
std::int64_t gregorianYear(std::int64_t daysSince1970) {
  const std::int64_t days = daysSince1970 + 719468;  // from 0000-03-01
  const std::int64_t era = (days >= 0 ? days : days - 146096) / 146097;
  const std::int64_t dayOfEra = days - era * 146097;
  const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const std::int64_t marchBasedMonth = (5 * dayOfYear + 2) / 153;  // 0 is March
  return yearOfEra + era * 400 + (marchBasedMonth >= 10 ? 1 : 0);
}

// Some three million years either way: far beyond any clock, and small
// enough that the year fits an int.
constexpr double farthestSeconds = 1e14;

}  // namespace

std::optional<AboutInfo> AboutInfo::fromInfoDictionary(const std::optional<PropertyList>& infoDictionary) {
  if (!infoDictionary) return std::nullopt;
  const auto* version = findEntry(*infoDictionary, "CFBundleShortVersionString");
  const auto* versionText = version ? version->get<std::string>() : nullptr;
  if (!versionText || versionText->empty()) return std::nullopt;
  const auto* build = findEntry(*infoDictionary, "CFBundleVersion");
  const auto* buildText = build ? build->get<std::string>() : nullptr;
  return AboutInfo{*versionText, buildText ? *buildText : std::string()};
}

std::string AboutInfo::formattedVersion() const {
  if (build.empty() || build == version) return version;
  return version + " (" + build + ")";
}

int AboutInfo::copyrightYear(Date date, const TimeZone& timeZone) {
  const double seconds =
      std::isnan(date.secondsSince1970) ? 0 : std::clamp(date.secondsSince1970, -farthestSeconds, farthestSeconds);
  const double local = seconds + timeZone.secondsFromGMT(Date{seconds});
  return static_cast<int>(gregorianYear(static_cast<std::int64_t>(std::floor(local / 86400))));
}

}  // namespace wakeloft
