#import "PanelWindowKeyObserver.h"

#include "base/MainThread.h"

@implementation PanelWindowKeyObserver {
  id<NSObject> _observer;
}

- (instancetype)init {
  self = [super initWithFrame:NSZeroRect];
  if (self) [self setAccessibilityElement:NO];
  return self;
}

- (void)dealloc {
  [self stopObserving];
}

- (nullable NSView*)hitTest:(NSPoint)point {
  return nil;
}

- (void)viewDidMoveToWindow {
  [super viewDidMoveToWindow];
  [self stopObserving];
  NSWindow* window = self.window;
  if (!window) return;
  __weak PanelWindowKeyObserver* weakSelf = self;
  _observer = [NSNotificationCenter.defaultCenter addObserverForName:NSWindowDidBecomeKeyNotification
                                                              object:window
                                                               queue:NSOperationQueue.mainQueue
                                                          usingBlock:^(NSNotification*) {
                                                            wakeloft::requireMainThread("PanelWindowKeyObserver");
                                                            PanelWindowKeyObserver* strongSelf = weakSelf;
                                                            if (strongSelf && strongSelf.onBecomeKey) {
                                                              strongSelf.onBecomeKey();
                                                            }
                                                          }];
}

- (void)stopObserving {
  if (!_observer) return;
  [NSNotificationCenter.defaultCenter removeObserver:_observer];
  _observer = nil;
}

@end
