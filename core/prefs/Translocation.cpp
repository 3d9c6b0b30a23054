#include "prefs/Translocation.h"

namespace wakeloft::Translocation {

bool isTranslocated(std::string_view realBundlePath) {
  if (!realBundlePath.starts_with('/')) return false;
  // Folders only: the bundle's own name does not count.
  const auto lastSlash = realBundlePath.find_last_of('/');
  for (std::size_t start = 1; start < lastSlash;) {
    const auto end = realBundlePath.find('/', start);
    if (realBundlePath.substr(start, end - start) == "AppTranslocation") return true;
    start = end + 1;
  }
  return false;
}

}  // namespace wakeloft::Translocation
