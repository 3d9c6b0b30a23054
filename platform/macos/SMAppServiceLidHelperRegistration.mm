#include "SMAppServiceLidHelperRegistration.h"

#include <stdexcept>
#include <string>

#include "lid/AppServiceStatus.h"

#import "NSStringText.h"

namespace wakeloft {

static_assert(SMAppServiceStatusNotRegistered == AppServiceStatus::notRegistered);
static_assert(SMAppServiceStatusEnabled == AppServiceStatus::enabled);
static_assert(SMAppServiceStatusRequiresApproval == AppServiceStatus::requiresApproval);
static_assert(SMAppServiceStatusNotFound == AppServiceStatus::notFound);

SMAppServiceLidHelperRegistration::SMAppServiceLidHelperRegistration(std::string_view plistName)
    : service_([SMAppService daemonServiceWithPlistName:nsString(plistName)]) {}

LidHelperStatus SMAppServiceLidHelperRegistration::status() const {
  return AppServiceStatus::lidHelperStatus(static_cast<long>(service_.status));
}

void SMAppServiceLidHelperRegistration::registerHelper() {
  NSError* error = nil;
  if ([service_ registerAndReturnError:&error]) return;
  const char* description = error.localizedDescription.UTF8String;
  throw std::runtime_error(description ? description : "The helper could not be registered.");
}

void SMAppServiceLidHelperRegistration::unregisterHelper() {
  NSError* error = nil;
  if ([service_ unregisterAndReturnError:&error]) return;
  // Unregistering an unregistered service fails (kSMErrorJobNotFound); what
  // matters is that nothing is registered.
  if (service_.status == SMAppServiceStatusNotRegistered) return;
  const char* description = error.localizedDescription.UTF8String;
  throw std::runtime_error(description ? description : "The helper could not be unregistered.");
}

}  // namespace wakeloft
