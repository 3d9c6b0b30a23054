#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace wakeloft {

// Where the app looks for updates unless a build names another feed: the
// appcast attached to the repository's latest GitHub release, which
// publishing a release therefore publishes.
namespace ReleaseFeed {

// "https://github.com/OWNER/REPO/releases/latest/download/appcast.xml" for
// "OWNER/REPO"; nothing for anything else (GitHub's names: letters, digits,
// "-", "_" and ".", neither part "." or "..").
std::optional<std::string> latestReleaseFeed(std::string_view repository);

}  // namespace ReleaseFeed
}  // namespace wakeloft
