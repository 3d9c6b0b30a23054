#pragma once

#import <AppKit/AppKit.h>

#include "ui/Controllers.h"

NS_ASSUME_NONNULL_BEGIN

// The menu-bar extra: the status item with the icon's image and spoken
// label, and the awake panel in a popover under it, opened and closed by a
// click. The portable MenuBarScene decides what both show and when. Main
// thread only.
@interface MenuBarStatusItem : NSObject <NSPopoverDelegate>

- (instancetype)initWithControllers:(wakeloft::Controllers)controllers NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;

// Opens the panel under the icon, when it is not open already.
- (void)showPanel;

@end

NS_ASSUME_NONNULL_END
