#pragma once

#import <AppKit/AppKit.h>

#include "ui/Controllers.h"

// The app value: installs the quit delegate, builds the four controllers
// once, in their launch order, hands the two awake controllers to the
// delegate and starts the software updater; once the application has
// launched, it puts its scene into the menu bar. It lives until the process
// ends.
@interface WakeloftApp : NSObject

// Makes the one app value; later calls do nothing. Main thread, before the
// application runs.
+ (void)launch;

// The controllers over the live system, in launch order.
+ (wakeloft::Controllers)live;

@end
