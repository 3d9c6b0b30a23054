#pragma once

#import <Foundation/Foundation.h>

#include <memory>

#import "QuitConfirmationDelegate.h"
#include "ui/UpdateReminder.h"

NS_ASSUME_NONNULL_BEGIN

// Software updates through Sparkle, with Sparkle's own windows. The one
// instance starts the updater when it is made. A scheduled update that Sparkle
// cannot show in front is left to the reminder, which the settings button
// shows. Main thread only.
@interface SoftwareUpdate : NSObject

@property(class, nonatomic, readonly) SoftwareUpdate* shared;

// Told when Sparkle relaunches the app for an update, so that quit is not
// questioned.
@property(nonatomic, weak, nullable) QuitConfirmationDelegate* quitConfirmation;

// A check the user asked for; it also brings a waiting update to the front.
- (void)checkForUpdates;

@property(nonatomic, readonly) std::shared_ptr<wakeloft::UpdateReminder> reminder;

- (instancetype)init NS_UNAVAILABLE;

@end

NS_ASSUME_NONNULL_END
