#include "RunningAppLanguage.h"

#include <vector>

#include "ui/AppLanguage.h"

namespace wakeloft::RunningAppLanguage {

namespace {

struct Values {
  std::vector<std::string> preferred;
  LayoutDirection direction;
  std::string locale;
};

const Values& values() {
  static const Values computed = [] {
    std::vector<std::string> preferred;
    for (NSString* identifier in NSBundle.mainBundle.preferredLocalizations) {
      if (const char* text = identifier.UTF8String) preferred.emplace_back(text);
    }
    const char* base = NSLocale.currentLocale.localeIdentifier.UTF8String;
    const auto direction = AppLanguage::direction(preferred);
    auto locale = AppLanguage::resolvedLocale(preferred, base ? base : "");
    return Values{std::move(preferred), direction, std::move(locale)};
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

const std::vector<std::string>& preferredLocalizations() { return values().preferred; }

}  // namespace wakeloft::RunningAppLanguage
