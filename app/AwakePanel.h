#pragma once

#import <AppKit/AppKit.h>

#include "PanelViews.h"
#include "ui/AwakePanelContent.h"

NS_ASSUME_NONNULL_BEGIN

// The awake panel: renders the portable panel content and nothing else,
// 260 points wide, in the app's layout direction. Each control performs its
// action through `perform`. A block is rebuilt only when its content
// changed, so the keyboard focus stays where it is while the countdown
// ticks. Main thread only.
@interface AwakePanel : NSViewController

// `footer` sits under the last divider: the settings menu's button.
- (instancetype)initWithPerform:(wakeloft::PanelViews::Perform)perform
                         footer:(nullable NSView*)footer NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithNibName:(nullable NSNibName)nibNameOrNil
                         bundle:(nullable NSBundle*)nibBundleOrNil NS_UNAVAILABLE;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

- (void)render:(const wakeloft::AwakePanelContent&)content;
// Puts the keyboard on the first control the keyboard can reach.
- (void)focusFirstControl;

// Each time the panel's window becomes key.
@property(nonatomic, copy, nullable) void (^onBecomeKey)(void);
// Escape.
@property(nonatomic, copy, nullable) void (^onCancel)(void);

@end

NS_ASSUME_NONNULL_END
