#include "CFPropertyListParser.h"

#include <CoreFoundation/CoreFoundation.h>

#include <algorithm>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "CFOwned.h"
#include "base/PropertyListNesting.h"

namespace wakeloft {

namespace {

// Unlike utf8(), refuses a text it cannot convert whole: a value read from
// disk must come through unchanged or not at all.
std::string exactUtf8(CFStringRef string) {
  const CFIndex length = CFStringGetLength(string);
  const CFRange all = CFRangeMake(0, length);
  CFIndex needed = 0;
  // A lone UTF-16 surrogate cannot be converted; no loss byte stands in.
  if (CFStringGetBytes(string, all, kCFStringEncodingUTF8, 0, false, nullptr, 0, &needed) != length) {
    throw PropertyListError("The property list holds a text that cannot be written as UTF-8.");
  }
  std::string text(static_cast<std::size_t>(needed), '\0');
  CFIndex used = 0;
  CFStringGetBytes(string, all, kCFStringEncodingUTF8, 0, false, reinterpret_cast<UInt8*>(text.data()), needed, &used);
  text.resize(static_cast<std::size_t>(used));
  return text;
}

PropertyList convert(CFTypeRef object, int depth) {
  if (depth > PropertyListNesting::maxDepth) throw PropertyListError("The property list is nested too deeply.");
  const CFTypeID type = CFGetTypeID(object);
  if (type == CFBooleanGetTypeID()) return CFBooleanGetValue(static_cast<CFBooleanRef>(object)) != 0;
  if (type == CFNumberGetTypeID()) {
    const auto number = static_cast<CFNumberRef>(object);
    if (CFNumberIsFloatType(number)) {
      double real = 0;
      CFNumberGetValue(number, kCFNumberDoubleType, &real);
      return real;
    }
    std::int64_t integer = 0;
    // False when the value does not fit, as an unsigned one above the
    // signed range.
    if (!CFNumberGetValue(number, kCFNumberSInt64Type, &integer)) {
      throw PropertyListError("The property list holds an integer outside the 64-bit signed range.");
    }
    return integer;
  }
  if (type == CFStringGetTypeID()) return exactUtf8(static_cast<CFStringRef>(object));
  if (type == CFDateGetTypeID()) {
    return Date{CFDateGetAbsoluteTime(static_cast<CFDateRef>(object)) + kCFAbsoluteTimeIntervalSince1970};
  }
  if (type == CFDataGetTypeID()) {
    const auto data = static_cast<CFDataRef>(object);
    const UInt8* bytes = CFDataGetBytePtr(data);
    const CFIndex length = CFDataGetLength(data);
    if (!bytes || length <= 0) return PropertyList::Data{};
    return PropertyList::Data(bytes, bytes + length);
  }
  if (type == CFArrayGetTypeID()) {
    const auto array = static_cast<CFArrayRef>(object);
    const CFIndex count = CFArrayGetCount(array);
    PropertyList::Array elements;
    elements.reserve(static_cast<std::size_t>(count));
    for (CFIndex i = 0; i < count; ++i) elements.push_back(convert(CFArrayGetValueAtIndex(array, i), depth + 1));
    return elements;
  }
  if (type == CFDictionaryGetTypeID()) {
    const auto dictionary = static_cast<CFDictionaryRef>(object);
    const CFIndex count = CFDictionaryGetCount(dictionary);
    std::vector<const void*> keys(static_cast<std::size_t>(count));
    std::vector<const void*> values(static_cast<std::size_t>(count));
    if (count > 0) CFDictionaryGetKeysAndValues(dictionary, keys.data(), values.data());
    PropertyList::Dictionary entries;
    entries.reserve(keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i) {
      if (CFGetTypeID(keys[i]) != CFStringGetTypeID()) {
        throw PropertyListError("The property list holds a dictionary key that is not a text.");
      }
      auto key = exactUtf8(static_cast<CFStringRef>(keys[i]));
      // Refused on Linux too, where libplist cannot read such a key; a list
      // reads the same on both platforms.
      if (key.find('\0') != std::string::npos) {
        throw PropertyListError("The property list holds a dictionary key with a zero character.");
      }
      entries.emplace_back(std::move(key), convert(values[i], depth + 1));
    }
    // Core Foundation keeps no order; sort so equal lists compare equal.
    std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    return entries;
  }
  throw PropertyListError("The property list holds a value of a kind that is not supported.");
}

}  // namespace

// Core Foundation's readers recurse once per level: parse() has already
// bounded the nesting.
PropertyList CFPropertyListParser::parseChecked(std::span<const std::uint8_t> bytes) const {
  if (bytes.empty()) throw PropertyListError("The property list is empty.");
  if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<CFIndex>::max())) {
    throw PropertyListError("The property list is too large.");
  }
  const CFOwned<CFDataRef> data(CFDataCreate(kCFAllocatorDefault, bytes.data(), static_cast<CFIndex>(bytes.size())));
  if (!data) throw PropertyListError("The property list could not be copied for reading.");

  CFErrorRef rawError = nullptr;
  const CFOwned<CFPropertyListRef> root(
      CFPropertyListCreateWithData(kCFAllocatorDefault, data.get(), kCFPropertyListImmutable, nullptr, &rawError));
  const CFOwned<CFErrorRef> error(rawError);
  if (!root) {
    std::string why = "The data is not a property list.";
    if (error) {
      const CFOwned<CFStringRef> description(CFErrorCopyDescription(error.get()));
      if (description) why = utf8(description.get());
    }
    throw PropertyListError(why);
  }
  return convert(root.get(), 0);
}

}  // namespace wakeloft
