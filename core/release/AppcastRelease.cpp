#include "release/AppcastRelease.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <map>

#include "base/RegularFile.h"
#include "release/Appcast.h"
#include "release/Base64.h"
#include "release/Changelog.h"
#include "release/SparkleSigningKey.h"
#include "release/SparkleVersionOrder.h"

namespace wakeloft {

namespace {

// Every option takes a value.
constexpr std::string_view valueOptions[] = {
    "--feed",          "--new-feed",    "--archive",     "--url",       "--version",
    "--short-version", "--minimum-system-version",      "--private-key", "--public-key", "--changelog",
};

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// What CFBundleVersion and CFBundleShortVersionString hold in practice.
bool isVersionText(std::string_view text) {
  return !text.empty() && text.size() <= 64 && std::all_of(text.begin(), text.end(), [](char c) {
    return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '.' || c == '-' || c == '_';
  });
}

// "14", "14.0", "14.0.1".
bool isSystemVersion(std::string_view text) {
  std::size_t parts = 0;
  for (std::size_t start = 0;; ++parts) {
    const auto dot = text.find('.', start);
    const auto part = text.substr(start, dot == std::string_view::npos ? std::string_view::npos : dot - start);
    if (part.empty() || part.size() > 4 || !std::all_of(part.begin(), part.end(), isDigit)) return false;
    if (dot == std::string_view::npos) return parts < 3;
    start = dot + 1;
  }
}

// An https address in plain printable ASCII, nothing that needs quoting.
bool isHttpsAddress(std::string_view text) {
  return text.starts_with("https://") && text.size() > 8 && text.size() <= 2048 &&
         std::all_of(text.begin(), text.end(),
                     [](char c) { return c > ' ' && c <= '~' && c != '"' && c != '<' && c != '>' && c != '\\'; });
}

}  // namespace

std::variant<AppcastRelease, AppcastRelease::Error> AppcastRelease::parse(const std::vector<std::string>& arguments,
                                                                          std::time_t now) {
  std::map<std::string, std::string, std::less<>> values;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& name = arguments[i];
    if (std::find(std::begin(valueOptions), std::end(valueOptions), name) == std::end(valueOptions)) {
      return Error{"unknown argument \"" + name + "\""};
    }
    if (values.contains(name)) return Error{name + " is given twice"};
    if (i + 1 >= arguments.size() || arguments[i + 1].empty()) return Error{name + " needs a value"};
    values[name] = arguments[++i];
  }
  for (const auto name : valueOptions) {
    if (name != "--new-feed" && !values.contains(name)) return Error{std::string(name) + " is required"};
  }

  AppcastRelease release;
  release.feedPath = values["--feed"];
  release.archivePath = values["--archive"];
  release.url = values["--url"];
  release.version = values["--version"];
  release.shortVersion = values["--short-version"];
  release.minimumSystemVersion = values["--minimum-system-version"];
  release.privateKeyPath = values["--private-key"];
  release.publicKey = values["--public-key"];
  release.changelogPath = values["--changelog"];
  release.publicationDate = now;
  if (values.contains("--new-feed")) release.newFeedLink = values["--new-feed"];

  for (const auto* address : {&release.url, release.newFeedLink ? &*release.newFeedLink : nullptr}) {
    if (address && !isHttpsAddress(*address)) {
      return Error{"\"" + *address + "\" is not an https address (printable ASCII, no quotes, spaces, <, > or \\)"};
    }
  }
  for (const auto* version : {&release.version, &release.shortVersion}) {
    if (!isVersionText(*version)) {
      return Error{"\"" + *version + "\" is not a version: up to 64 letters, digits, \".\", \"-\" and \"_\""};
    }
  }
  if (!isSystemVersion(release.minimumSystemVersion)) {
    return Error{"\"" + release.minimumSystemVersion + "\" is not a macOS version such as 14.0"};
  }
  const auto key = Base64::decode(release.publicKey);
  if (!key || key->size() != 32) {
    return Error{"--public-key needs the base64 of a 32-byte Ed25519 key, as SUPublicEDKey holds it"};
  }
  return release;
}

std::variant<AppcastItem, AppcastRelease::Error> AppcastRelease::add() const {
  const auto keyText = RegularFile::read(privateKeyPath, maxKeyFileBytes);
  if (!keyText) return Error{"cannot read the private key file " + privateKeyPath};
  auto key = SparkleSigningKey::forPublicKey(*keyText, publicKey);
  if (const auto* error = std::get_if<SparkleSigningKey::Error>(&key)) return Error{error->message};
  const auto& signingKey = std::get<SparkleSigningKey>(key);

  const auto changelog = RegularFile::read(changelogPath, maxChangelogBytes);
  if (!changelog) return Error{"cannot read the changelog " + changelogPath};
  auto notes = Changelog::releaseNotes(*changelog, shortVersion);
  if (const auto* error = std::get_if<Changelog::Error>(&notes)) return Error{error->message};

  const auto archive = RegularFile::read(archivePath, maxArchiveBytes);
  if (!archive) return Error{"cannot read the archive " + archivePath + " (a regular file of at most 1 GiB)"};
  if (archive->empty()) return Error{"the archive " + archivePath + " is empty"};

  std::string feedText;
  mode_t mode = 0644;
  struct stat status {};
  if (newFeedLink) {
    if (::lstat(feedPath.c_str(), &status) == 0 || errno != ENOENT) {
      return Error{feedPath + " is already there; --new-feed starts a feed only where there is none"};
    }
    feedText = Appcast::emptyFeed("Wakeloft", *newFeedLink);
  } else {
    auto text = RegularFile::read(feedPath, Appcast::maxBytes);
    if (!text || ::stat(feedPath.c_str(), &status) != 0) {
      return Error{"cannot read the appcast " + feedPath + " (give --new-feed LINK to start one)"};
    }
    feedText = std::move(*text);
    mode = status.st_mode & 07777;
  }
  auto read = Appcast::read(std::move(feedText));
  if (const auto* error = std::get_if<Appcast::Error>(&read)) {
    return Error{feedPath + " is not an appcast to add to: " + error->message};
  }
  const auto& appcast = std::get<Appcast>(read);
  for (const auto& existing : appcast.versions()) {
    if (SparkleVersionOrder::compare(version, existing) != std::strong_ordering::greater) {
      return Error{"build version " + version + " does not grow: " + feedPath +
                   " already has an item with sparkle:version " + existing};
    }
  }

  AppcastItem item;
  item.title = "Version " + shortVersion;
  item.description = std::move(std::get<std::string>(notes));
  item.version = version;
  item.shortVersion = shortVersion;
  item.minimumSystemVersion = minimumSystemVersion;
  item.publicationDate = publicationDate;
  item.url = url;
  item.length = archive->size();
  item.edSignature = signingKey.sign(*archive);
  if (const int error = RegularFile::replace(feedPath, appcast.withItem(item), mode); error != 0) {
    return Error{"cannot write " + feedPath + ": " + std::strerror(error)};
  }
  return item;
}

}  // namespace wakeloft
