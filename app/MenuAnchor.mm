#import "MenuAnchor.h"

@implementation MenuAnchor

- (instancetype)init {
  self = [super initWithFrame:NSZeroRect];
  if (self) [self setAccessibilityElement:NO];
  return self;
}

- (BOOL)isFlipped {
  return NO;
}

- (nullable NSView*)hitTest:(NSPoint)point {
  return nil;
}

@end
