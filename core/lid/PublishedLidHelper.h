#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/DefaultsDomain.h"
#include "lid/LidHelperStatus.h"

namespace wakeloft {

// The helper's registration status and version, in the app's defaults for
// the command to read: the system answers for the registration only inside
// the app's own bundle. The app writes them whenever they change.
namespace PublishedLidHelper {

inline constexpr const char* statusKey = "com.wakeloft.lidHelperStatus";
inline constexpr const char* versionKey = "com.wakeloft.lidHelperVersion";
// Version texts are short; anything longer is not one.
inline constexpr std::size_t longestVersion = 64;

struct Published {
  // Both absent when the app never published them.
  std::optional<LidHelperStatus> status;
  std::optional<std::string> version;
  // Keys holding a value that is not what the app writes.
  std::vector<std::string> unreadableKeys;
};

// Writes only what differs from what is stored; an absent version is removed.
void publish(DefaultsDomain& defaults, LidHelperStatus status, const std::optional<std::string>& version);
// Strict: a status is one of the four names, a version a non-empty string
// of at most `longestVersion` bytes; anything else reads as absent and is
// named, never rewritten.
Published read(const DefaultsDomain& defaults);

}  // namespace PublishedLidHelper
}  // namespace wakeloft
