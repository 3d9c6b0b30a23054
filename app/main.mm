// Wakeloft: the menu-bar app. The app value is made on the main thread,
// then AppKit's standard life cycle runs; there is no command line.
#import <AppKit/AppKit.h>

#import "WakeloftApp.h"

int main(int argc, const char* argv[]) {
  @autoreleasepool {
    // The shared application first, so the app value can install its delegate.
    [NSApplication sharedApplication];
    [WakeloftApp launch];
  }
  return NSApplicationMain(argc, argv);
}
