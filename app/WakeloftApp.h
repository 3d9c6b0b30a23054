#pragma once

#import <AppKit/AppKit.h>

#include "ui/Controllers.h"

// The app value: installs the quit delegate, builds the four controllers
// once, in their launch order, and hands the two awake controllers to the
// delegate. It lives until the process ends.
@interface WakeloftApp : NSObject

// Makes the one app value; later calls do nothing. Main thread, before the
// application runs.
+ (void)launch;

// The controllers over the live system, in launch order.
+ (wakeloft::Controllers)live;

@end
