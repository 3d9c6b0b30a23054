#import "SoftwareUpdate.h"

#import <Sparkle/Sparkle.h>

#include "base/MainThread.h"

@interface SoftwareUpdate () <SPUUpdaterDelegate>
- (instancetype)initStartingUpdater NS_DESIGNATED_INITIALIZER;
@end

@implementation SoftwareUpdate {
  SPUStandardUpdaterController* _controller;
}

+ (SoftwareUpdate*)shared {
  wakeloft::requireMainThread("SoftwareUpdate.shared");
  static SoftwareUpdate* shared = [[SoftwareUpdate alloc] initStartingUpdater];
  return shared;
}

- (instancetype)initStartingUpdater {
  wakeloft::requireMainThread("SoftwareUpdate");
  self = [super init];
  if (self) {
    // The controller holds its delegate weakly; this object lives as long as
    // the process.
    _controller = [[SPUStandardUpdaterController alloc] initWithStartingUpdater:YES
                                                                updaterDelegate:self
                                                             userDriverDelegate:nil];
  }
  return self;
}

- (void)checkForUpdates {
  wakeloft::requireMainThread("SoftwareUpdate checkForUpdates");
  [_controller checkForUpdates:nil];
}

- (void)updaterWillRelaunchApplication:(SPUUpdater*)updater {
  wakeloft::requireMainThread("updaterWillRelaunchApplication");
  self.quitConfirmation.relaunchingForUpdate = YES;
}

@end
