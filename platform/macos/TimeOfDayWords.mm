#include "base/TimeOfDayWords.h"

#import <Foundation/Foundation.h>

#include <cstdio>

namespace wakeloft::TimeOfDayWords {

std::string shortTime(int minutesAfterMidnight, const std::string& locale) {
  constexpr int day = 24 * 60;
  const int minutes = ((minutesAfterMidnight % day) + day) % day;
  char fallback[8];
  std::snprintf(fallback, sizeof fallback, "%02d:%02d", minutes / 60, minutes % 60);

  @autoreleasepool {
    NSString* identifier = [[NSString alloc] initWithBytes:locale.data()
                                                    length:locale.size()
                                                  encoding:NSUTF8StringEncoding];
    NSDateFormatter* formatter = [[NSDateFormatter alloc] init];
    formatter.locale = [NSLocale localeWithLocaleIdentifier:identifier != nil ? identifier : @""];
    formatter.dateStyle = NSDateFormatterNoStyle;
    formatter.timeStyle = NSDateFormatterShortStyle;
    // The minutes after midnight of 1 January 1970 in GMT: no zone may shift them.
    formatter.timeZone = [NSTimeZone timeZoneForSecondsFromGMT:0];
    NSString* text = [formatter stringFromDate:[NSDate dateWithTimeIntervalSince1970:minutes * 60.0]];
    const char* utf8 = text.UTF8String;
    return utf8 ? std::string(utf8) : std::string(fallback);
  }
}

}  // namespace wakeloft::TimeOfDayWords
