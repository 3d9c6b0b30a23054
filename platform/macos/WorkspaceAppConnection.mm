#include "WorkspaceAppConnection.h"

#import <AppKit/AppKit.h>
#include <limits.h>
#include <mach-o/dyld.h>
#include <stdlib.h>

#include <cmath>
#include <vector>
#include <stdexcept>

#include "NSStringText.h"
#include "automation/CommandBundle.h"

namespace wakeloft {

WorkspaceAppConnection::WorkspaceAppConnection(const std::string& bundleIdentifier, double deliveryTimeout)
    : bundleIdentifier_(bundleIdentifier),
      deliveryTimeout_(deliveryTimeout),
      ownApp_(commandsOwnApp()),
      defaults_(bundleIdentifier) {}

std::optional<std::string> WorkspaceAppConnection::commandsOwnApp() {
  uint32_t size = 0;
  _NSGetExecutablePath(nullptr, &size);
  std::vector<char> path(size + 1);
  if (_NSGetExecutablePath(path.data(), &size) != 0) return std::nullopt;
  // A Homebrew link, or any other, leads to the command inside the app.
  char resolved[PATH_MAX];
  if (!realpath(path.data(), resolved)) return std::nullopt;
  return CommandBundle::enclosingApp(resolved);
}

bool WorkspaceAppConnection::isAppRunning() const {
  return [NSRunningApplication runningApplicationsWithBundleIdentifier:nsString(bundleIdentifier_)].count > 0;
}

std::optional<std::string> WorkspaceAppConnection::appPath() const {
  NSURL* running = [NSRunningApplication runningApplicationsWithBundleIdentifier:nsString(bundleIdentifier_)]
                       .firstObject.bundleURL;
  if (running.path) return utf8(running.path);
  return ownApp_;
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
  void (^handed)(NSRunningApplication*, NSError*) = ^(NSRunningApplication* app, NSError* error) {
    if (!app) failure = error ? error.localizedDescription : @"no application opened it";
    dispatch_semaphore_signal(delivered);
  };
  NSURL* app = [NSRunningApplication runningApplicationsWithBundleIdentifier:nsString(bundleIdentifier_)]
                   .firstObject.bundleURL;
  if (!app && ownApp_) app = [NSURL fileURLWithPath:nsString(*ownApp_) isDirectory:YES];
  if (app) {
    [NSWorkspace.sharedWorkspace openURLs:@[ url ]
                     withApplicationAtURL:app
                            configuration:configuration
                        completionHandler:handed];
  } else {
    [NSWorkspace.sharedWorkspace openURL:url configuration:configuration completionHandler:handed];
  }
  const auto wait = static_cast<int64_t>(std::ceil(deliveryTimeout_ * NSEC_PER_SEC));
  if (dispatch_semaphore_wait(delivered, dispatch_time(DISPATCH_TIME_NOW, wait)) != 0) {
    throw std::runtime_error("the system did not hand the address over in time");
  }
  if (failure) throw std::runtime_error(utf8(failure));
}

}  // namespace wakeloft
