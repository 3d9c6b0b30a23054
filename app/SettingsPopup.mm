#import "SettingsPopup.h"

#import "ActionHandler.h"
#include "BundleTexts.h"
#include "PanelViews.h"
#include "RunningAppLanguage.h"
#include "base/MainThread.h"
#include "base/Observation.h"
#include "clock/MainRunLoop.h"
#include "ui/SettingsPopupContent.h"

using namespace wakeloft;

namespace {

constexpr CGFloat inset = 14;
constexpr CGFloat width = 240;

}  // namespace

@implementation SettingsPopup {
  std::shared_ptr<PresetDurationsController> _presets;
  Subscription _presetsChanged;
  NSTextField* _title;
  NSStackView* _rows;
  NSTextField* _hint;
  BOOL _renderPending;
}

- (instancetype)initWithPresets:(std::shared_ptr<PresetDurationsController>)presets {
  self = [super initWithNibName:nil bundle:nil];
  if (self) _presets = std::move(presets);
  return self;
}

- (void)loadView {
  _title = PanelViews::label(@"", PanelViews::font(NSFontTextStyleHeadline), NSColor.labelColor);
  _rows = PanelViews::column(@[], SettingsPopupContent::rowSpacing);
  _hint = PanelViews::wrappingLabel(@"", PanelViews::font(NSFontTextStyleFootnote), NSColor.secondaryLabelColor,
                                    width - 2 * inset);
  self.view = PanelViews::popoverRoot(PanelViews::column(@[ _title, _rows, _hint ], 10), inset, width);

  __weak SettingsPopup* weakSelf = self;
  _presetsChanged = _presets->observe([weakSelf] { [weakSelf scheduleRender]; });
  [self render];
}

// In a later turn of the main loop, so a row is never rebuilt inside its own
// action, and once for changes made together.
- (void)scheduleRender {
  if (_renderPending) return;
  _renderPending = YES;
  __weak SettingsPopup* weakSelf = self;
  MainRunLoop::perform([weakSelf] {
    SettingsPopup* strongSelf = weakSelf;
    if (!strongSelf) return;
    strongSelf->_renderPending = NO;
    [strongSelf render];
  });
}

- (void)render {
  requireMainThread("SettingsPopup render");
  const auto content = SettingsPopupContent::current(*_presets, RunningAppLanguage::locale());
  _title.stringValue = BundleTexts::string(content.title);
  _hint.stringValue = BundleTexts::string(content.hint);

  NSArray<NSView*>* oldRows = [_rows.arrangedSubviews copy];
  const NSUInteger focusedRow = [oldRows indexOfObjectIdenticalTo:(id)self.view.window.firstResponder];
  for (NSView* old in oldRows) [old removeFromSuperview];
  NSString* help = BundleTexts::string(content.rowHelp);
  for (const auto& row : content.rows) [_rows addArrangedSubview:[self starButton:row help:help]];
  // Rebuilt rows keep the keyboard on the row it was on.
  if (focusedRow != NSNotFound && focusedRow < _rows.arrangedSubviews.count) {
    [self.view.window makeFirstResponder:_rows.arrangedSubviews[focusedRow]];
  }

  [self.view layoutSubtreeIfNeeded];
  self.preferredContentSize = self.view.fittingSize;
}

// A toggle drawn as a star, yellow and filled when on, before the duration.
- (NSButton*)starButton:(const SettingsPopupContent::Row&)row help:(NSString*)help {
  NSButton* star = [NSButton buttonWithTitle:BundleTexts::string(row.label) target:nil action:nil];
  [star setAccessibilityLabel:BundleTexts::string(row.spokenLabel)];
  [star setAccessibilityHelp:help];
  [star setButtonType:NSButtonTypePushOnPushOff];
  star.bordered = NO;
  star.image = PanelViews::symbol(row.symbolName(), NSFontTextStyleBody);
  star.imagePosition = NSImageLeading;
  star.imageHugsTitle = YES;
  star.contentTintColor = row.isStarred ? NSColor.systemYellowColor : nil;
  star.state = row.isStarred ? NSControlStateValueOn : NSControlStateValueOff;
  const AwakeDuration duration = row.duration;
  __weak SettingsPopup* weakSelf = self;
  [ActionHandler attachTo:star
                   action:^(id) {
                     SettingsPopup* strongSelf = weakSelf;
                     if (!strongSelf) return;
                     SettingsPopupContent::toggle(duration, *strongSelf->_presets);
                     // A fourth star is refused without a change to follow,
                     // and the row's own state has flipped all the same.
                     [strongSelf scheduleRender];
                   }];
  return star;
}

@end
