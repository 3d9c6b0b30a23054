#include "SMAppServiceLoginItem.h"

#include <stdexcept>
#include <string>
#include <vector>

#include "prefs/StableLocation.h"

namespace wakeloft {

static_assert(SMAppServiceStatusNotRegistered == AppServiceStatus::notRegistered);
static_assert(SMAppServiceStatusEnabled == AppServiceStatus::enabled);
static_assert(SMAppServiceStatusRequiresApproval == AppServiceStatus::requiresApproval);
static_assert(SMAppServiceStatusNotFound == AppServiceStatus::notFound);

namespace {

// Symbolic links resolved and the path standardised; empty when the URL has
// no file path.
std::string standardizedPath(NSURL* url) {
  NSString* path = url.URLByResolvingSymlinksInPath.URLByStandardizingPath.path;
  // UTF8String rather than fileSystemRepresentation, which raises on a path
  // it cannot convert; both sides of the comparison come through here.
  const char* text = path.UTF8String;
  return text ? std::string(text) : std::string();
}

[[noreturn]] void throwSystemError(NSError* error, const char* fallback) {
  const char* description = error.localizedDescription.UTF8String;
  throw std::runtime_error(description ? description : fallback);
}

}  // namespace

SMAppServiceLoginItem::SMAppServiceLoginItem(SMAppService* service, NSURL* bundleURL)
    : service_(service), bundleURL_(bundleURL) {}

SMAppServiceLoginItem::SMAppServiceLoginItem()
    : SMAppServiceLoginItem(SMAppService.mainAppService, NSBundle.mainBundle.bundleURL) {}

LoginItemState SMAppServiceLoginItem::state() const {
  return loginItemState(static_cast<long>(service_.status));
}

bool SMAppServiceLoginItem::isAtStableLocation() const {
  if (!bundleURL_) return false;
  const std::string bundle = standardizedPath(bundleURL_);
  std::vector<std::string> folders;
  NSArray<NSURL*>* applications = [NSFileManager.defaultManager URLsForDirectory:NSApplicationDirectory
                                                                       inDomains:NSUserDomainMask | NSLocalDomainMask];
  for (NSURL* folder in applications) folders.push_back(standardizedPath(folder));
  return StableLocation::isInside(bundle, folders);
}

void SMAppServiceLoginItem::registerItem() {
  NSError* error = nil;
  if ([service_ registerAndReturnError:&error]) return;
  throwSystemError(error, "Wakeloft could not be added to the login items.");
}

void SMAppServiceLoginItem::unregisterItem() {
  NSError* error = nil;
  if ([service_ unregisterAndReturnError:&error]) return;
  throwSystemError(error, "Wakeloft could not be removed from the login items.");
}

}  // namespace wakeloft
