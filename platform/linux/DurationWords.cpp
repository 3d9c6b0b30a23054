#include "base/DurationWords.h"

#include <unicode/measfmt.h>
#include <unicode/measunit.h>
#include <unicode/measure.h>

#include <vector>

namespace wakeloft::DurationWords {

namespace {

using UnitMaker = icu::MeasureUnit* (*)(UErrorCode&);

struct Amount {
  long long value;
  UnitMaker unit;
};

// ICU's narrow width is the platform's abbreviated style ("1h 30m" in
// English), its wide width the full one ("1 hour, 30 minutes"); its numeric
// width is the positional countdown ("1:05:09").
std::string format(const std::vector<Amount>& amounts, UMeasureFormatWidth width, const std::string& locale) {
  UErrorCode status = U_ZERO_ERROR;
  icu::MeasureFormat formatter(icu::Locale(locale.c_str()), width, status);
  std::vector<icu::Measure> measures;
  for (const auto& amount : amounts) {
    measures.emplace_back(icu::Formattable(static_cast<int64_t>(amount.value)), amount.unit(status), status);
  }
  icu::UnicodeString text;
  icu::FieldPosition position(icu::FieldPosition::DONT_CARE);
  formatter.formatMeasures(measures.data(), static_cast<int32_t>(measures.size()), text, position, status);
  if (U_FAILURE(status)) return {};
  std::string utf8;
  text.toUTF8String(utf8);
  return utf8;
}

}  // namespace

std::string hoursAndMinutes(long long wholeMinutes, const std::string& locale, UnitsStyle style) {
  const long long hours = wholeMinutes / 60;
  const long long minutes = wholeMinutes % 60;
  std::vector<Amount> amounts;
  if (hours != 0) amounts.push_back({hours, icu::MeasureUnit::createHour});
  if (minutes != 0 || hours == 0) amounts.push_back({minutes, icu::MeasureUnit::createMinute});
  return format(amounts, style == UnitsStyle::full ? UMEASFMT_WIDTH_WIDE : UMEASFMT_WIDTH_NARROW, locale);
}

std::string hoursMinutesSeconds(long long wholeSeconds, const std::string& locale) {
  return format({{wholeSeconds / 3600, icu::MeasureUnit::createHour},
                 {wholeSeconds / 60 % 60, icu::MeasureUnit::createMinute},
                 {wholeSeconds % 60, icu::MeasureUnit::createSecond}},
                UMEASFMT_WIDTH_NUMERIC, locale);
}

std::string minutesSeconds(long long wholeSeconds, const std::string& locale) {
  return format({{wholeSeconds / 60, icu::MeasureUnit::createMinute}, {wholeSeconds % 60, icu::MeasureUnit::createSecond}},
                UMEASFMT_WIDTH_NUMERIC, locale);
}

}  // namespace wakeloft::DurationWords
