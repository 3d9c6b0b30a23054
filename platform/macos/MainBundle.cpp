#include "MainBundle.h"

#include <CoreFoundation/CoreFoundation.h>

#include <sys/param.h>

#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

#include "CFOwned.h"
#include "CFPropertyListParser.h"

namespace wakeloft::MainBundle {

std::optional<PropertyList> infoDictionary() {
  CFBundleRef bundle = CFBundleGetMainBundle();
  if (!bundle) return std::nullopt;
  CFDictionaryRef info = CFBundleGetInfoDictionary(bundle);  // not ours to release
  if (!info) return std::nullopt;

  // CFBundle adds entries for its own use, and not all of them are
  // property-list values (the Info.plist's own URL is a CFURL); the rest goes
  // through the one property-list reader the app has.
  const CFOwned<CFMutableDictionaryRef> plain(
      CFDictionaryCreateMutable(kCFAllocatorDefault, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
  if (!plain) return std::nullopt;
  const CFIndex count = CFDictionaryGetCount(info);
  std::vector<const void*> keys(static_cast<std::size_t>(count));
  std::vector<const void*> values(static_cast<std::size_t>(count));
  if (count > 0) CFDictionaryGetKeysAndValues(info, keys.data(), values.data());
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (CFGetTypeID(keys[i]) != CFStringGetTypeID()) continue;
    if (!CFPropertyListIsValid(values[i], kCFPropertyListBinaryFormat_v1_0)) continue;
    CFDictionaryAddValue(plain.get(), keys[i], values[i]);
  }

  CFErrorRef rawError = nullptr;
  const CFOwned<CFDataRef> data(
      CFPropertyListCreateData(kCFAllocatorDefault, plain.get(), kCFPropertyListBinaryFormat_v1_0, 0, &rawError));
  const CFOwned<CFErrorRef> error(rawError);
  if (!data) return std::nullopt;
  try {
    return CFPropertyListParser().parse(
        std::span<const std::uint8_t>(CFDataGetBytePtr(data.get()), static_cast<std::size_t>(CFDataGetLength(data.get()))));
  } catch (const PropertyListError&) {
    return std::nullopt;
  }
}

std::optional<std::string> preferredLocalization() {
  CFBundleRef bundle = CFBundleGetMainBundle();
  if (!bundle) return std::nullopt;
  const CFOwned<CFArrayRef> available(CFBundleCopyBundleLocalizations(bundle));
  if (!available) return std::nullopt;
  const CFOwned<CFArrayRef> preferred(CFBundleCopyPreferredLocalizationsFromArray(available.get()));
  if (!preferred || CFArrayGetCount(preferred.get()) == 0) return std::nullopt;
  CFTypeRef first = CFArrayGetValueAtIndex(preferred.get(), 0);
  if (!first || CFGetTypeID(first) != CFStringGetTypeID()) return std::nullopt;
  return utf8(static_cast<CFStringRef>(first));
}

std::optional<std::string> realPath() {
  CFBundleRef bundle = CFBundleGetMainBundle();
  if (!bundle) return std::nullopt;
  const CFOwned<CFURLRef> url(CFBundleCopyBundleURL(bundle));
  if (!url) return std::nullopt;
  std::uint8_t path[MAXPATHLEN];
  if (!CFURLGetFileSystemRepresentation(url.get(), true, path, sizeof path)) return std::nullopt;
  char resolved[MAXPATHLEN];
  if (!::realpath(reinterpret_cast<const char*>(path), resolved)) return std::nullopt;
  return std::string(resolved);
}

}  // namespace wakeloft::MainBundle
