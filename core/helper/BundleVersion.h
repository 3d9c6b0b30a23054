#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/PropertyList.h"
#include "base/PropertyListParser.h"

namespace wakeloft {

// The version a bundle declares in its Info.plist: the short version the
// user sees and the build number.
struct BundleVersion {
  std::string shortVersion;
  std::string build;

  // The Info.plist is read whole, so a larger one is refused outright.
  static constexpr std::size_t maxInfoPlistBytes = 1'048'576;
  static constexpr std::size_t maxVersionTextBytes = 64;

  // The bundle version of the program at `executablePath`, read from the
  // Info.plist two levels above it (Contents/Helpers/program ->
  // Contents/Info.plist). Absent on any failure.
  static std::optional<BundleVersion> aroundExecutable(std::string_view executablePath,
                                                       const PropertyListParser& parser);

  // "CFBundleShortVersionString" and "CFBundleVersion" of an Info.plist
  // dictionary, when both are version texts.
  static std::optional<BundleVersion> fromInfoDictionary(const PropertyList& info);

  // Non-empty, at most 64 bytes, only ASCII letters, digits, ".", "-", "_".
  static bool isVersionText(std::string_view text);

  // "1.4 (27)": how the helper's log and the doctor name a version.
  std::string text() const { return shortVersion + " (" + build + ")"; }

  friend bool operator==(const BundleVersion&, const BundleVersion&) = default;
};

}  // namespace wakeloft
