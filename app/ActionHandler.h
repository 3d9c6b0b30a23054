#pragma once

#import <AppKit/AppKit.h>

NS_ASSUME_NONNULL_BEGIN

// Runs a block as the action of a control or a menu item. Controls and menu
// items hold their target weakly: a menu item keeps its handler as its
// represented object, a control through `attachTo:`.
@interface ActionHandler : NSObject

- (instancetype)initWithAction:(void (^)(id _Nullable sender))action NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;

// The one action method.
- (void)run:(nullable id)sender;

// Makes a handler the control's target and action, kept alive by the control.
+ (void)attachTo:(NSControl*)control action:(void (^)(id _Nullable sender))action;
// The same for a menu item, which keeps it as its represented object.
+ (void)attachToItem:(NSMenuItem*)item action:(void (^)(id _Nullable sender))action;

@end

NS_ASSUME_NONNULL_END
