#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "automatic/AutomaticSessionController.h"
#include "automatic/ScreenLockSetting.h"

NS_ASSUME_NONNULL_BEGIN

// The Automatic popover: a switch per rule with its line, the chosen apps
// with their icons and an open panel that offers only apps, the schedule's
// day toggles and two time pickers, the any-or-all choice, the screen-lock
// switch where the lock is watched, and the note on command-line tools.
// Follows the automatic controller while it is shown. Main thread only.
@interface AutomaticPopup : NSViewController

- (instancetype)initWithAutomatic:(std::shared_ptr<wakeloft::AutomaticSessionController>)automatic
                       screenLock:(std::shared_ptr<wakeloft::ScreenLockSetting>)screenLock NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithNibName:(nullable NSNibName)nibNameOrNil
                         bundle:(nullable NSBundle*)nibBundleOrNil NS_UNAVAILABLE;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

@end

NS_ASSUME_NONNULL_END
