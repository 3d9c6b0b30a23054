#import "PanelViews.h"

#include <optional>
#include <string>

#import "ActionHandler.h"
#include "BundleTexts.h"
#include "RunningAppLanguage.h"
#include "ui/AwakePanelContent.h"

// The panel's controls act on the first click even while its window is not
// key: a panel opened by an address may be refused the front, and then a
// click that only brought the window forward would be lost.
@interface FirstClickButton : NSButton
@end

@implementation FirstClickButton
- (BOOL)acceptsFirstMouse:(NSEvent*)event {
  return YES;
}
@end

@interface FirstClickSwitch : NSSwitch
@end

@implementation FirstClickSwitch
- (BOOL)acceptsFirstMouse:(NSEvent*)event {
  return YES;
}
@end

namespace wakeloft::PanelViews {

namespace {

NSStackView* stack(NSArray<NSView*>* views, NSUserInterfaceLayoutOrientation orientation, CGFloat spacing) {
  NSStackView* stack = [NSStackView stackViewWithViews:views];
  stack.translatesAutoresizingMaskIntoConstraints = NO;
  stack.orientation = orientation;
  stack.spacing = spacing;
  stack.alignment =
      orientation == NSUserInterfaceLayoutOrientationVertical ? NSLayoutAttributeLeading : NSLayoutAttributeCenterY;
  stack.userInterfaceLayoutDirection = RunningAppLanguage::userInterfaceLayoutDirection();
  return stack;
}

void setAccessibilityLabel(NSView* view, const std::optional<LocalizedText>& label) {
  if (label) [view setAccessibilityLabel:BundleTexts::string(*label)];
}

}  // namespace

NSFont* font(NSFontTextStyle style) { return [NSFont preferredFontForTextStyle:style options:@{}]; }

NSImage* symbol(std::string_view name, NSFontTextStyle style) {
  NSImage* image = [NSImage imageWithSystemSymbolName:BundleTexts::string(name) accessibilityDescription:nil];
  return [image imageWithSymbolConfiguration:[NSImageSymbolConfiguration configurationWithTextStyle:style]];
}

NSTextField* label(NSString* text, NSFont* labelFont, NSColor* color) {
  NSTextField* field = [NSTextField labelWithString:text];
  field.font = labelFont;
  field.textColor = color;
  return field;
}

NSTextField* wrappingLabel(NSString* text, NSFont* labelFont, NSColor* color, CGFloat width) {
  NSTextField* field = [NSTextField wrappingLabelWithString:text];
  field.selectable = NO;
  field.font = labelFont;
  field.textColor = color;
  field.preferredMaxLayoutWidth = width;
  return field;
}

NSButton* pushButton(const PanelButton& button, NSControlSize size, const Perform& perform) {
  NSButton* control = [FirstClickButton buttonWithTitle:BundleTexts::string(button.title) target:nil action:nil];
  control.translatesAutoresizingMaskIntoConstraints = NO;
  control.controlSize = size;
  control.font = [NSFont systemFontOfSize:[NSFont systemFontSizeForControlSize:size]];
  setAccessibilityLabel(control, button.accessibilityLabel);
  const PanelAction action = button.action;
  const Perform performing = perform;
  [ActionHandler attachTo:control
                   action:^(id) {
                     performing(action);
                   }];
  return control;
}

NSButton* linkButton(const PanelButton& button, const Perform& perform) {
  NSButton* control = pushButton(button, NSControlSizeSmall, perform);
  control.bordered = NO;
  control.font = font(NSFontTextStyleFootnote);
  control.contentTintColor = NSColor.linkColor;
  return control;
}

NSView* switchRow(const PanelSwitch& toggle, NSControlSize size, CGFloat width, const Perform& perform,
                  NSSwitch* _Nullable* _Nullable control) {
  NSString* title = BundleTexts::string(toggle.title);
  NSTextField* titleField = label(title, [NSFont systemFontOfSize:[NSFont systemFontSizeForControlSize:size]],
                                  NSColor.labelColor);
  // The switch speaks for itself; the title beside it is not a second element.
  [titleField setAccessibilityElement:NO];

  NSSwitch* flip = [[FirstClickSwitch alloc] init];
  flip.controlSize = size;
  flip.enabled = toggle.isEnabled;
  [flip setAccessibilityLabel:title];
  if (toggle.accessibilityHelp) [flip setAccessibilityHelp:BundleTexts::string(*toggle.accessibilityHelp)];
  setState(flip, toggle);
  const PanelSwitch bound = toggle;
  const Perform performing = perform;
  [ActionHandler attachTo:flip
                   action:^(id sender) {
                     NSSwitch* flipped = sender;
                     performing(bound.action(flipped.state == NSControlStateValueOn));
                   }];

  NSStackView* line = row(@[ titleField ], 8);
  [line addView:flip inGravity:NSStackViewGravityTrailing];
  [line.widthAnchor constraintEqualToConstant:width].active = YES;
  if (control) *control = flip;
  return line;
}

void setState(NSSwitch* control, const PanelSwitch& toggle) {
  control.state = toggle.isOn ? NSControlStateValueOn : NSControlStateValueOff;
  control.enabled = toggle.isEnabled;
}

NSView* note(const PanelNote& content, NSColor* color, CGFloat width, const Perform& perform) {
  // macOS text styles have fixed sizes, so the box is the symbol width as set.
  const CGFloat symbolWidth = AwakePanelContent::noteSymbolWidth;
  const CGFloat gap = 4;
  NSFont* footnote = font(NSFontTextStyleFootnote);

  NSImageView* mark = [[NSImageView alloc] init];
  mark.image = symbol(symbolName(content.symbol), NSFontTextStyleFootnote);
  mark.contentTintColor = color;
  [mark setAccessibilityElement:NO];
  mark.translatesAutoresizingMaskIntoConstraints = NO;
  [mark.widthAnchor constraintEqualToConstant:symbolWidth].active = YES;

  NSMutableArray<NSView*>* lines = [NSMutableArray array];
  NSTextField* text = wrappingLabel(BundleTexts::string(content.text), footnote, color, width - symbolWidth - gap);
  [text setAccessibilityLabel:BundleTexts::string(content.spokenLabel(BundleTexts::lookup()))];
  [lines addObject:text];
  if (content.link) [lines addObject:linkButton(*content.link, perform)];

  NSStackView* marked = row(@[ mark, column(lines, 2) ], gap);
  marked.alignment = NSLayoutAttributeTop;
  return marked;
}

NSBox* divider() {
  NSBox* box = [[NSBox alloc] init];
  box.boxType = NSBoxSeparator;
  box.translatesAutoresizingMaskIntoConstraints = NO;
  return box;
}

NSStackView* column(NSArray<NSView*>* views, CGFloat spacing) {
  return stack(views, NSUserInterfaceLayoutOrientationVertical, spacing);
}

NSStackView* row(NSArray<NSView*>* views, CGFloat spacing) {
  return stack(views, NSUserInterfaceLayoutOrientationHorizontal, spacing);
}

NSView* popoverRoot(NSStackView* content, CGFloat inset, std::optional<CGFloat> width) {
  content.edgeInsets = NSEdgeInsetsMake(inset, inset, inset, inset);
  content.translatesAutoresizingMaskIntoConstraints = NO;
  NSView* root = [[NSView alloc] init];
  root.userInterfaceLayoutDirection = RunningAppLanguage::userInterfaceLayoutDirection();
  [root addSubview:content];
  [NSLayoutConstraint activateConstraints:@[
    [content.topAnchor constraintEqualToAnchor:root.topAnchor],
    [content.bottomAnchor constraintEqualToAnchor:root.bottomAnchor],
    [content.leadingAnchor constraintEqualToAnchor:root.leadingAnchor],
    [content.trailingAnchor constraintEqualToAnchor:root.trailingAnchor],
  ]];
  if (width) [root.widthAnchor constraintEqualToConstant:*width].active = YES;
  return root;
}

NSView* firstKeyView(NSView* view) {
  if (view.canBecomeKeyView && !view.hidden) return view;
  for (NSView* subview in view.subviews) {
    if (NSView* found = firstKeyView(subview)) return found;
  }
  return nil;
}

}  // namespace wakeloft::PanelViews
