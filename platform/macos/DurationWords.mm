#include "base/DurationWords.h"

#import <Foundation/Foundation.h>

namespace wakeloft::DurationWords {

namespace {

// A formatter in the requested locale: the calendar carries the locale. An
// identifier that is not UTF-8 names no locale; the root locale stands in.
NSDateComponentsFormatter* formatter(const std::string& locale) {
  NSString* identifier = [[NSString alloc] initWithBytes:locale.data()
                                                  length:locale.size()
                                                encoding:NSUTF8StringEncoding];
  NSCalendar* calendar = [NSCalendar.currentCalendar copy];
  calendar.locale = [NSLocale localeWithLocaleIdentifier:identifier != nil ? identifier : @""];
  NSDateComponentsFormatter* formatter = [[NSDateComponentsFormatter alloc] init];
  formatter.calendar = calendar;
  return formatter;
}

std::string text(NSString* string) {
  const char* utf8 = string.UTF8String;
  return utf8 ? std::string(utf8) : std::string();
}

// The countdown as the platform shows a timer: positional, zero-padded.
std::string countdown(long long wholeSeconds, NSCalendarUnit units, const std::string& locale) {
  @autoreleasepool {
    NSDateComponentsFormatter* countdownFormatter = formatter(locale);
    countdownFormatter.allowedUnits = units;
    countdownFormatter.unitsStyle = NSDateComponentsFormatterUnitsStylePositional;
    countdownFormatter.zeroFormattingBehavior = NSDateComponentsFormatterZeroFormattingBehaviorPad;
    return text([countdownFormatter stringFromTimeInterval:static_cast<NSTimeInterval>(wholeSeconds)]);
  }
}

}  // namespace

std::string hoursAndMinutes(long long wholeMinutes, const std::string& locale, UnitsStyle style) {
  @autoreleasepool {
    NSDateComponentsFormatter* labelFormatter = formatter(locale);
    labelFormatter.allowedUnits = NSCalendarUnitHour | NSCalendarUnitMinute;
    labelFormatter.unitsStyle = style == UnitsStyle::full ? NSDateComponentsFormatterUnitsStyleFull
                                                          : NSDateComponentsFormatterUnitsStyleAbbreviated;
    labelFormatter.zeroFormattingBehavior = NSDateComponentsFormatterZeroFormattingBehaviorDropAll;
    labelFormatter.maximumUnitCount = 0;
    return text([labelFormatter stringFromTimeInterval:static_cast<NSTimeInterval>(wholeMinutes) * 60]);
  }
}

std::string hoursMinutesSeconds(long long wholeSeconds, const std::string& locale) {
  return countdown(wholeSeconds, NSCalendarUnitHour | NSCalendarUnitMinute | NSCalendarUnitSecond, locale);
}

std::string minutesSeconds(long long wholeSeconds, const std::string& locale) {
  return countdown(wholeSeconds, NSCalendarUnitMinute | NSCalendarUnitSecond, locale);
}

}  // namespace wakeloft::DurationWords
