#include "UserDefaultsDomain.h"

#include <CoreFoundation/CoreFoundation.h>

#include <algorithm>
#include <stdexcept>
#include <type_traits>
#include <vector>

#include "CFOwned.h"

namespace wakeloft {

namespace {

DefaultsValue fromPropertyList(CFTypeRef value);

DefaultsValue fromNumber(CFNumberRef number) {
  // Integers by value, unless they do not fit in 64 bits.
  if (!CFNumberIsFloatType(number)) {
    std::int64_t integer = 0;
    if (CFNumberGetValue(number, kCFNumberSInt64Type, &integer)) return DefaultsValue(integer);
  }
  double real = 0;
  CFNumberGetValue(number, kCFNumberFloat64Type, &real);
  return DefaultsValue(real);
}

DefaultsValue fromArray(CFArrayRef array) {
  DefaultsValue::Array elements;
  const CFIndex count = CFArrayGetCount(array);
  elements.reserve(static_cast<std::size_t>(count));
  for (CFIndex i = 0; i < count; ++i) elements.push_back(fromPropertyList(CFArrayGetValueAtIndex(array, i)));
  return DefaultsValue(std::move(elements));
}

DefaultsValue fromDictionary(CFDictionaryRef dictionary) {
  const CFIndex count = CFDictionaryGetCount(dictionary);
  std::vector<const void*> keys(static_cast<std::size_t>(count));
  std::vector<const void*> values(static_cast<std::size_t>(count));
  CFDictionaryGetKeysAndValues(dictionary, keys.data(), values.data());
  DefaultsValue::Dictionary entries;
  entries.reserve(keys.size());
  for (std::size_t i = 0; i < keys.size(); ++i) {
    // Property lists only have string keys.
    if (CFGetTypeID(keys[i]) != CFStringGetTypeID()) continue;
    entries.emplace_back(utf8(static_cast<CFStringRef>(keys[i])), fromPropertyList(values[i]));
  }
  // The dictionary has no order of its own; sorting makes reads repeatable.
  std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  return DefaultsValue(std::move(entries));
}

// Preferences hold property lists only: every kind below is one of them.
DefaultsValue fromPropertyList(CFTypeRef value) {
  const CFTypeID type = CFGetTypeID(value);
  if (type == CFBooleanGetTypeID()) return DefaultsValue(static_cast<bool>(CFBooleanGetValue(static_cast<CFBooleanRef>(value))));
  if (type == CFNumberGetTypeID()) return fromNumber(static_cast<CFNumberRef>(value));
  if (type == CFStringGetTypeID()) return DefaultsValue(utf8(static_cast<CFStringRef>(value)));
  if (type == CFDateGetTypeID()) {
    const CFAbsoluteTime absolute = CFDateGetAbsoluteTime(static_cast<CFDateRef>(value));
    return DefaultsValue(Date::fromSecondsSince1970(absolute + kCFAbsoluteTimeIntervalSince1970));
  }
  if (type == CFDataGetTypeID()) {
    const auto data = static_cast<CFDataRef>(value);
    const UInt8* bytes = CFDataGetBytePtr(data);
    return DefaultsValue(DefaultsValue::Data(bytes, bytes + CFDataGetLength(data)));
  }
  if (type == CFArrayGetTypeID()) return fromArray(static_cast<CFArrayRef>(value));
  if (type == CFDictionaryGetTypeID()) return fromDictionary(static_cast<CFDictionaryRef>(value));
  // The store hands out nothing else. Were it ever to, the value reads as an
  // empty dictionary: present, and of no kind any reader accepts.
  return DefaultsValue(DefaultsValue::Dictionary{});
}

CFOwned<CFStringRef> requireCFString(const std::string& text, const char* what) {
  auto string = makeCFString(text);
  if (!string) throw std::invalid_argument(std::string("Wakeloft: the preference ") + what + " is not UTF-8 text.");
  return string;
}

CFOwned<CFTypeRef> toPropertyList(const DefaultsValue& value) {
  return std::visit(
      [](const auto& v) -> CFOwned<CFTypeRef> {
        using T = std::decay_t<decltype(v)>;
        if constexpr (std::is_same_v<T, bool>) {
          return CFOwned<CFTypeRef>(CFRetain(v ? kCFBooleanTrue : kCFBooleanFalse));
        } else if constexpr (std::is_same_v<T, std::int64_t>) {
          return CFOwned<CFTypeRef>(CFNumberCreate(kCFAllocatorDefault, kCFNumberSInt64Type, &v));
        } else if constexpr (std::is_same_v<T, double>) {
          return CFOwned<CFTypeRef>(CFNumberCreate(kCFAllocatorDefault, kCFNumberFloat64Type, &v));
        } else if constexpr (std::is_same_v<T, std::string>) {
          auto string = requireCFString(v, "value");
          return CFOwned<CFTypeRef>(CFRetain(string.get()));
        } else if constexpr (std::is_same_v<T, Date>) {
          return CFOwned<CFTypeRef>(
              CFDateCreate(kCFAllocatorDefault, v.secondsSince1970 - kCFAbsoluteTimeIntervalSince1970));
        } else if constexpr (std::is_same_v<T, DefaultsValue::Data>) {
          return CFOwned<CFTypeRef>(CFDataCreate(kCFAllocatorDefault, v.data(), static_cast<CFIndex>(v.size())));
        } else if constexpr (std::is_same_v<T, DefaultsValue::Array>) {
          CFMutableArrayRef array =
              CFArrayCreateMutable(kCFAllocatorDefault, static_cast<CFIndex>(v.size()), &kCFTypeArrayCallBacks);
          CFOwned<CFTypeRef> owned(array);
          for (const auto& element : v) CFArrayAppendValue(array, toPropertyList(element).get());
          return owned;
        } else {
          static_assert(std::is_same_v<T, DefaultsValue::Dictionary>);
          CFMutableDictionaryRef dictionary = CFDictionaryCreateMutable(
              kCFAllocatorDefault, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks);
          CFOwned<CFTypeRef> owned(dictionary);
          // Adding keeps the first of two equal keys, as readers of the
          // portable value find them.
          for (const auto& [key, element] : v) {
            CFDictionaryAddValue(dictionary, requireCFString(key, "dictionary key").get(),
                                 toPropertyList(element).get());
          }
          return owned;
        }
      },
      value.value);
}

}  // namespace

std::optional<DefaultsValue> UserDefaultsDomain::object(const std::string& key) const {
  const auto name = makeCFString(key);
  if (!name) return std::nullopt;  // no stored key can have that name
  const CFOwned<CFPropertyListRef> value(CFPreferencesCopyAppValue(name.get(), application()));
  if (!value) return std::nullopt;
  return fromPropertyList(value.get());
}

void UserDefaultsDomain::set(const std::string& key, DefaultsValue value) {
  const auto name = requireCFString(key, "key");
  const auto propertyList = toPropertyList(value);
  // No synchronize: the preferences daemon stores every change on its own,
  // and waiting for it would hold the main thread on another process.
  CFPreferencesSetAppValue(name.get(), propertyList.get(), application());
}

void UserDefaultsDomain::remove(const std::string& key) {
  const auto name = makeCFString(key);
  if (!name) return;
  CFPreferencesSetAppValue(name.get(), nullptr, application());
}

bool UserDefaultsDomain::boolean(const std::string& key) const {
  const auto name = makeCFString(key);
  if (!name) return false;
  return CFPreferencesGetAppBooleanValue(name.get(), application(), nullptr);
}

bool UserDefaultsDomain::isForced(const std::string& key) const {
  const auto name = makeCFString(key);
  return name && CFPreferencesAppValueIsForced(name.get(), application());
}

}  // namespace wakeloft
