#pragma once

#import <AppKit/AppKit.h>

NS_ASSUME_NONNULL_BEGIN

// An empty view laid under the settings button, in unflipped coordinates
// (y grows upwards), from which the settings menu pops up and to which its
// popovers are anchored. It takes no clicks and is nothing to VoiceOver.
@interface MenuAnchor : NSView
- (instancetype)init;
@end

NS_ASSUME_NONNULL_END
