#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/DefaultsDomain.h"
#include "base/Observation.h"
#include "lid/LidAwakeController.h"
#include "lid/LidHelperRegistration.h"
#include "lid/LidHelperStatus.h"

namespace wakeloft {

// The helper's registration status and version, in the app's defaults for
// the command to read: the system answers for the registration only inside
// the app's own bundle. Written at launch and again whenever Deepwake's
// state changes, which is when the registration can have moved (a first
// use registers the helper, approval lets it run). Main thread only.
class PublishedLidHelper {
 public:
  static constexpr const char* statusKey = "com.wakeloft.lidHelperStatus";
  static constexpr const char* versionKey = "com.wakeloft.lidHelperVersion";
  // Version texts are short; anything longer is not one.
  static constexpr std::size_t longestVersion = 64;

  struct Published {
    // Both absent when the app never published them.
    std::optional<LidHelperStatus> status;
    std::optional<std::string> version;
    // Keys holding a value that is not what the app writes.
    std::vector<std::string> unreadableKeys;
  };

  // `version` is that of the helper the app registers; `defaults` must
  // outlive this.
  PublishedLidHelper(std::shared_ptr<LidAwakeController> lid, std::shared_ptr<const LidHelperRegistration> registration,
                     std::optional<std::string> version, DefaultsDomain& defaults);

  // Publishes the registration as it is now, for a change that Deepwake's
  // state does not show (the helper unregistered by a profile).
  void update();

  // Writes only what differs from what is stored; an absent version is removed.
  static void publish(DefaultsDomain& defaults, LidHelperStatus status, const std::optional<std::string>& version);
  // Strict: a status is one of the four names, a version a non-empty string
  // of at most `longestVersion` bytes; anything else reads as absent and is
  // named, never rewritten.
  static Published read(const DefaultsDomain& defaults);

 private:
  std::shared_ptr<LidAwakeController> lid_;
  std::shared_ptr<const LidHelperRegistration> registration_;
  std::optional<std::string> version_;
  DefaultsDomain& defaults_;
  Subscription changes_;
};

}  // namespace wakeloft
