#pragma once

#import <Foundation/Foundation.h>
#import <ServiceManagement/ServiceManagement.h>

#include "prefs/LoginItem.h"

namespace wakeloft {

// The app itself as a login item, through ServiceManagement's main-app
// service. Main thread only; every call is a synchronous one into the system.
class SMAppServiceLoginItem final : public LoginItem {
 public:
  // `bundleURL` is where the app bundle runs from.
  SMAppServiceLoginItem(SMAppService* service, NSURL* bundleURL);
  // The main-app service and the main bundle.
  SMAppServiceLoginItem();

  LoginItemState state() const override;
  // Inside the user's or the local Applications folder, symbolic links
  // resolved.
  bool isAtStableLocation() const override;
  // Both throw std::runtime_error with the system's own description.
  void registerItem() override;
  void unregisterItem() override;

 private:
  SMAppService* service_;
  NSURL* bundleURL_;
};

}  // namespace wakeloft
