#include "prefs/StableLocation.h"

#include <filesystem>

namespace wakeloft::StableLocation {

std::string standardized(std::string_view path) {
  if (path.empty() || path.front() != '/') return {};
  auto text = std::filesystem::path(path).lexically_normal().generic_string();
  // "//x" is an implementation-defined root to the library; it is plain "/x"
  // on the Mac.
  const auto firstKept = text.find_first_not_of('/');
  text = firstKept == std::string::npos ? "/" : "/" + text.substr(firstKept);
  while (text.size() > 1 && text.back() == '/') text.pop_back();
  return text;
}

bool isInside(std::string_view bundlePath, std::span<const std::string> applicationsFolders) {
  const auto bundle = standardized(bundlePath);
  if (bundle.empty()) return false;
  for (const auto& folder : applicationsFolders) {
    const auto prefix = standardized(folder);
    if (prefix.empty()) continue;
    if (bundle.starts_with(prefix + '/')) return true;
  }
  return false;
}

}  // namespace wakeloft::StableLocation
