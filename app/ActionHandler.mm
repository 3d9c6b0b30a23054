#import "ActionHandler.h"

#import <objc/runtime.h>

#include "base/MainThread.h"

namespace {

// The address is the key under which a control keeps its handler.
const char attachedHandlerKey = 0;

}  // namespace

@implementation ActionHandler {
  void (^_action)(id _Nullable);
}

- (instancetype)initWithAction:(void (^)(id _Nullable))action {
  self = [super init];
  if (self) _action = [action copy];
  return self;
}

- (void)run:(id)sender {
  wakeloft::requireMainThread("an interface action");
  // Held here, so that an action which rebuilds the view holding this handler
  // runs to its end.
  void (^action)(id _Nullable) = _action;
  if (action) action(sender);
}

+ (void)attachTo:(NSControl*)control action:(void (^)(id _Nullable))action {
  ActionHandler* handler = [[ActionHandler alloc] initWithAction:action];
  objc_setAssociatedObject(control, &attachedHandlerKey, handler, OBJC_ASSOCIATION_RETAIN_NONATOMIC);
  control.target = handler;
  control.action = @selector(run:);
}

+ (void)attachToItem:(NSMenuItem*)item action:(void (^)(id _Nullable))action {
  ActionHandler* handler = [[ActionHandler alloc] initWithAction:action];
  item.representedObject = handler;
  item.target = handler;
  item.action = @selector(run:);
}

@end
