#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>

namespace wakeloft {

// One release in an appcast: an <item> of Sparkle's RSS feed, with the
// version elements at the top level of the item (where Sparkle's
// documentation puts them) and the archive in its enclosure.
struct AppcastItem {
  std::string title;
  // The release notes as HTML; no element when empty.
  std::string description;
  // sparkle:version, the build's CFBundleVersion, which Sparkle compares.
  std::string version;
  // sparkle:shortVersionString, the version the user sees.
  std::string shortVersion;
  std::string minimumSystemVersion;
  std::time_t publicationDate = 0;
  std::string url;
  std::uint64_t length = 0;
  // The base64 Ed25519 signature of the archive.
  std::string edSignature;

  // The element's text, from "<item>" to "</item>" without a final line
  // break: each child on a line of its own indented by `indent` and `step`,
  // the closing tag indented by `indent`.
  std::string xml(std::string_view indent, std::string_view step) const;

  // `text` as XML character data or a quoted attribute value.
  static std::string escaped(std::string_view text);

  // RFC 822 in UTC, as RSS dates are: "Mon, 05 Oct 2015 19:20:11 +0000".
  static std::string rfc822Date(std::time_t time);
};

}  // namespace wakeloft
