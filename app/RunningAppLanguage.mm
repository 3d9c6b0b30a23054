#include "RunningAppLanguage.h"

#include <vector>

#include "ui/AppLanguage.h"

namespace wakeloft::RunningAppLanguage {

namespace {

struct Values {
  LayoutDirection direction;
  std::string locale;
};

std::vector<std::string> preferredLocalizations() {
  std::vector<std::string> identifiers;
  for (NSString* identifier in NSBundle.mainBundle.preferredLocalizations) {
    if (const char* text = identifier.UTF8String) identifiers.emplace_back(text);
  }
  return identifiers;
}

const Values& values() {
  static const Values computed = [] {
    const auto preferred = preferredLocalizations();
    const char* base = NSLocale.currentLocale.localeIdentifier.UTF8String;
    return Values{AppLanguage::direction(preferred), AppLanguage::resolvedLocale(preferred, base ? base : "")};
  }();
  return computed;
}

}  // namespace

LayoutDirection layoutDirection() { return values().direction; }

NSUserInterfaceLayoutDirection userInterfaceLayoutDirection() {
  return layoutDirection() == LayoutDirection::rightToLeft ? NSUserInterfaceLayoutDirectionRightToLeft
                                                           : NSUserInterfaceLayoutDirectionLeftToRight;
}

const std::string& locale() { return values().locale; }

}  // namespace wakeloft::RunningAppLanguage
