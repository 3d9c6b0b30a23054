#import "SoftwareUpdate.h"

#import <Sparkle/Sparkle.h>

#import "NSStringText.h"
#include "base/MainThread.h"

@interface SoftwareUpdate () <SPUUpdaterDelegate, SPUStandardUserDriverDelegate>
- (instancetype)initStartingUpdater NS_DESIGNATED_INITIALIZER;
@end

@implementation SoftwareUpdate {
  SPUStandardUpdaterController* _controller;
  std::shared_ptr<wakeloft::UpdateReminder> _reminder;
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
    _reminder = std::make_shared<wakeloft::UpdateReminder>();
    // The controller holds its delegates weakly; this object lives as long as
    // the process.
    _controller = [[SPUStandardUpdaterController alloc] initWithStartingUpdater:YES
                                                                updaterDelegate:self
                                                             userDriverDelegate:self];
  }
  return self;
}

- (void)checkForUpdates {
  wakeloft::requireMainThread("SoftwareUpdate checkForUpdates");
  [_controller checkForUpdates:nil];
}

- (std::shared_ptr<wakeloft::UpdateReminder>)reminder {
  return _reminder;
}

// --- Gentle reminders: Sparkle 2.2 and later never bring a scheduled alert of
// a background app to the front, except just after launch. ---

- (BOOL)supportsGentleScheduledUpdateReminders {
  return YES;
}

- (BOOL)standardUserDriverShouldHandleShowingScheduledUpdate:(SUAppcastItem*)update
                                         andInImmediateFocus:(BOOL)immediateFocus {
  return wakeloft::UpdateReminder::updaterShowsScheduledUpdate(immediateFocus);
}

- (void)standardUserDriverWillHandleShowingUpdate:(BOOL)handleShowingUpdate
                                        forUpdate:(SUAppcastItem*)update
                                            state:(SPUUserUpdateState*)state {
  wakeloft::requireMainThread("standardUserDriverWillHandleShowingUpdate");
  _reminder->willShowUpdate(handleShowingUpdate, state.userInitiated, wakeloft::utf8(update.displayVersionString));
}

- (void)standardUserDriverDidReceiveUserAttentionForUpdate:(SUAppcastItem*)update {
  wakeloft::requireMainThread("standardUserDriverDidReceiveUserAttentionForUpdate");
  _reminder->userAttended();
}

- (void)standardUserDriverWillFinishUpdateSession {
  wakeloft::requireMainThread("standardUserDriverWillFinishUpdateSession");
  _reminder->sessionFinished();
}

- (void)updaterWillRelaunchApplication:(SPUUpdater*)updater {
  wakeloft::requireMainThread("updaterWillRelaunchApplication");
  self.quitConfirmation.relaunchingForUpdate = YES;
}

@end
