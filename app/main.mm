// Wakeloft: the menu-bar app. The app value is made on the main thread,
// then AppKit's standard life cycle runs. One hidden argument is for
// uninstalling: --unregister-helper removes the helper from Login Items and
// exits before anything of the app starts.
#import <AppKit/AppKit.h>

#include <cstdio>
#include <cstring>
#include <exception>

#include "SMAppServiceLidHelperRegistration.h"
#include "helper/LidHelperService.h"

#import "WakeloftApp.h"

namespace {

// Only the app can unregister its own daemon; Homebrew and people removing
// the app by hand run this first.
int unregisterHelper() {
  try {
    wakeloft::SMAppServiceLidHelperRegistration(wakeloft::LidHelperService::plistName).unregisterHelper();
    std::printf("Wakeloft: the helper is unregistered.\n");
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "Wakeloft: %s\n", error.what());
    return 1;
  }
}

}  // namespace

int main(int argc, const char* argv[]) {
  if (argc == 2 && std::strcmp(argv[1], "--unregister-helper") == 0) {
    @autoreleasepool {
      return unregisterHelper();
    }
  }
  @autoreleasepool {
    // The shared application first, so the app value can install its delegate.
    [NSApplication sharedApplication];
    [WakeloftApp launch];
  }
  return NSApplicationMain(argc, argv);
}
