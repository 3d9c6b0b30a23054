#include "WorkspaceAppConnection.h"

#import <AppKit/AppKit.h>

#include <cmath>
#include <stdexcept>

#include "NSStringText.h"

namespace wakeloft {

WorkspaceAppConnection::WorkspaceAppConnection(const std::string& bundleIdentifier, double deliveryTimeout)
    : bundleIdentifier_(bundleIdentifier), deliveryTimeout_(deliveryTimeout), defaults_(bundleIdentifier) {}

bool WorkspaceAppConnection::isAppRunning() const {
  return [NSRunningApplication runningApplicationsWithBundleIdentifier:nsString(bundleIdentifier_)].count > 0;
}

void WorkspaceAppConnection::open(const std::string& address) {
  NSURL* url = [NSURL URLWithString:nsString(address)];
  if (!url) throw std::runtime_error("\"" + address + "\" is not an address the system takes");

  NSWorkspaceOpenConfiguration* configuration = [NSWorkspaceOpenConfiguration configuration];
  // A menu-bar app has nothing to bring forward, and the terminal keeps the
  // keyboard.
  configuration.activates = NO;
  dispatch_semaphore_t delivered = dispatch_semaphore_create(0);
  // Written on AppKit's queue before the signal, read here after the wait.
  __block NSString* failure = nil;
  [NSWorkspace.sharedWorkspace openURL:url
                         configuration:configuration
                     completionHandler:^(NSRunningApplication* app, NSError* error) {
                       if (!app) failure = error ? error.localizedDescription : @"no application opened it";
                       dispatch_semaphore_signal(delivered);
                     }];
  const auto wait = static_cast<int64_t>(std::ceil(deliveryTimeout_ * NSEC_PER_SEC));
  if (dispatch_semaphore_wait(delivered, dispatch_time(DISPATCH_TIME_NOW, wait)) != 0) {
    throw std::runtime_error("the system did not hand the address over in time");
  }
  if (failure) throw std::runtime_error(utf8(failure));
}

}  // namespace wakeloft
