#pragma once

#include <cstddef>
#include <ctime>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "release/AppcastItem.h"

namespace wakeloft {

// A release to add to an appcast, as tools/appcast's command line gives it:
//   appcast --feed FILE [--new-feed LINK] --archive FILE --url URL
//           --version BUILD --short-version VERSION
//           --minimum-system-version VERSION
//           --private-key FILE --public-key BASE64 --changelog FILE
struct AppcastRelease {
  std::string feedPath;
  // Starts a new feed, whose channel links here, instead of adding to one.
  std::optional<std::string> newFeedLink;
  std::string archivePath;
  // Where the archive is downloaded from: the enclosure's url.
  std::string url;
  std::string version;
  std::string shortVersion;
  std::string minimumSystemVersion;
  // A key file as Sparkle's `generate_keys -x` writes it.
  std::string privateKeyPath;
  // The app's SUPublicEDKey, which the private key must belong to.
  std::string publicKey;
  // CHANGELOG.md, whose section for the short version gives the notes.
  std::string changelogPath;
  std::time_t publicationDate = 0;

  static constexpr std::size_t maxArchiveBytes = std::size_t{1} << 30;
  static constexpr std::size_t maxKeyFileBytes = 4096;
  static constexpr std::size_t maxChangelogBytes = 1024 * 1024;
  static constexpr const char* usage =
      "usage: appcast --feed FILE [--new-feed LINK] --archive FILE --url URL --version BUILD "
      "--short-version VERSION --minimum-system-version VERSION --private-key FILE --public-key BASE64 "
      "--changelog FILE";

  struct Error {
    std::string message;
  };

  // `arguments` excludes the program's name; the release is dated `now`.
  // Refuses a malformed value as well as a missing or unknown option.
  static std::variant<AppcastRelease, Error> parse(const std::vector<std::string>& arguments, std::time_t now);

  // Signs the archive and writes the feed anew with the release as its
  // first item. Refuses a key that is not the public key's, a changelog
  // without the version's section, an unreadable archive, a feed that is not an appcast, and a build version that is not
  // greater, by Sparkle's order, than every version the feed has; then the
  // feed is left as it was.
  std::variant<AppcastItem, Error> add() const;
};

}  // namespace wakeloft
