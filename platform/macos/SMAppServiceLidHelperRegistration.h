#pragma once

#import <ServiceManagement/ServiceManagement.h>

#include <string_view>

#include "lid/LidHelperRegistration.h"

namespace wakeloft {

// The lid helper as a launch daemon of the app, registered through
// ServiceManagement. Main thread only.
class SMAppServiceLidHelperRegistration final : public LidHelperRegistration {
 public:
  // `plistName` names the daemon's property list in the bundle's
  // Contents/Library/LaunchDaemons.
  explicit SMAppServiceLidHelperRegistration(std::string_view plistName);

  LidHelperStatus status() const override;
  // Throws std::runtime_error carrying the system's own description.
  void registerHelper() override;
  // Removes the helper from Login Items and stops it; a helper that is not
  // registered is no failure. Throws std::runtime_error carrying the
  // system's own description.
  void unregisterHelper() override;

 private:
  SMAppService* service_;
};

}  // namespace wakeloft
