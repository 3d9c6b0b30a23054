#pragma once

#import <AppKit/AppKit.h>

NS_ASSUME_NONNULL_BEGIN

// An invisible view in the panel's background that tells the panel each time
// its window becomes key, which is each time the user opens it. It never
// takes clicks, focus or VoiceOver's attention.
@interface PanelWindowKeyObserver : NSView

- (instancetype)init;

// Replaced when the panel is rebuilt; the observation stays.
@property(nonatomic, copy, nullable) void (^onBecomeKey)(void);

@end

NS_ASSUME_NONNULL_END
