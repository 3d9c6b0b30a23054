#pragma once

#import <Foundation/Foundation.h>

#import "QuitConfirmationDelegate.h"

NS_ASSUME_NONNULL_BEGIN

// Software updates through Sparkle, with Sparkle's own windows. The one
// instance starts the updater when it is made. Main thread only.
@interface SoftwareUpdate : NSObject

@property(class, nonatomic, readonly) SoftwareUpdate* shared;

// Told when Sparkle relaunches the app for an update, so that quit is not
// questioned.
@property(nonatomic, weak, nullable) QuitConfirmationDelegate* quitConfirmation;

// A check the user asked for.
- (void)checkForUpdates;

- (instancetype)init NS_UNAVAILABLE;

@end

NS_ASSUME_NONNULL_END
