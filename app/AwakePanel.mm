#import "AwakePanel.h"

#include <optional>

#include "BundleTexts.h"
#include "GlyphImages.h"
#import "PanelWindowKeyObserver.h"
#include "RunningAppLanguage.h"
#include "base/MainThread.h"

using namespace wakeloft;
using PanelViews::column;
using PanelViews::row;

namespace {

constexpr CGFloat inset = 14;
constexpr CGFloat headerGlyphSize = 22;
// Between the lines inside one block.
constexpr CGFloat lineSpacing = 4;

constexpr CGFloat contentWidth() { return AwakePanelContent::width - 2 * inset; }

NSColor* noteColor(const PanelNote& note) {
  return note.symbol == NoteSymbol::error ? NSColor.systemRedColor : NSColor.secondaryLabelColor;
}

}  // namespace

@implementation AwakePanel {
  PanelViews::Perform _perform;
  NSView* _footer;
  std::optional<AwakePanelContent> _shown;

  PanelWindowKeyObserver* _keyObserver;
  NSStackView* _stack;
  NSStackView* _header;
  NSImageView* _glyph;
  NSTextField* _title;
  NSTextField* _statusLine;
  NSTextField* _explanation;
  NSStackView* _automaticBlock;
  NSStackView* _mainButtonBlock;
  NSStackView* _sessionBlock;
  NSStackView* _deepwakeBlock;
  NSStackView* _retryBlock;
  NSStackView* _loginBlock;
  NSStackView* _screenOnBlock;
  NSSwitch* _deepwakeSwitch;
  NSSwitch* _loginSwitch;
  NSSwitch* _screenOnSwitch;
}

- (instancetype)initWithPerform:(PanelViews::Perform)perform footer:(NSView*)footer {
  self = [super initWithNibName:nil bundle:nil];
  if (self) {
    _perform = std::move(perform);
    _footer = footer;
  }
  return self;
}

- (void)loadView {
  const NSUserInterfaceLayoutDirection direction = RunningAppLanguage::userInterfaceLayoutDirection();
  NSView* root = [[NSView alloc] init];
  root.userInterfaceLayoutDirection = direction;

  // In the background, where it never takes a click.
  _keyObserver = [[PanelWindowKeyObserver alloc] init];
  __weak AwakePanel* weakSelf = self;
  _keyObserver.onBecomeKey = ^{
    AwakePanel* strongSelf = weakSelf;
    if (strongSelf && strongSelf.onBecomeKey) strongSelf.onBecomeKey();
  };
  [root addSubview:_keyObserver];

  // The header is one element for VoiceOver, labelled with the spoken status.
  _glyph = [[NSImageView alloc] init];
  _title = PanelViews::label(@"", PanelViews::font(NSFontTextStyleHeadline), NSColor.labelColor);
  _statusLine = PanelViews::label(
      @"",
      [NSFont monospacedDigitSystemFontOfSize:PanelViews::font(NSFontTextStyleSubheadline).pointSize
                                       weight:NSFontWeightRegular],
      NSColor.secondaryLabelColor);
  for (NSView* part in @[ _glyph, _title, _statusLine ]) [part setAccessibilityElement:NO];
  _header = row(@[ _glyph, column(@[ _title, _statusLine ], 2) ], 8);
  [_header setAccessibilityElement:YES];
  [_header setAccessibilityRole:NSAccessibilityStaticTextRole];

  _explanation = PanelViews::wrappingLabel(@"", PanelViews::font(NSFontTextStyleCallout), NSColor.secondaryLabelColor,
                                           contentWidth());

  _automaticBlock = column(@[], lineSpacing);
  _mainButtonBlock = column(@[], lineSpacing);
  _sessionBlock = column(@[], AwakePanelContent::presetsCaptionSpacing);
  _screenOnBlock = column(@[], lineSpacing);
  _deepwakeBlock = column(@[], lineSpacing);
  _retryBlock = column(@[], lineSpacing);
  _loginBlock = column(@[], lineSpacing);

  NSMutableArray<NSView*>* blocks = [NSMutableArray arrayWithArray:@[
    _header, _explanation, _automaticBlock, _mainButtonBlock, _sessionBlock, _screenOnBlock, _deepwakeBlock, _retryBlock,
    PanelViews::divider(), _loginBlock, PanelViews::divider()
  ]];
  if (_footer) [blocks addObject:_footer];
  _stack = column(blocks, AwakePanelContent::blockSpacing);
  _stack.edgeInsets = NSEdgeInsetsMake(inset, inset, inset, inset);
  _stack.translatesAutoresizingMaskIntoConstraints = NO;
  [root addSubview:_stack];

  NSMutableArray<NSLayoutConstraint*>* constraints = [NSMutableArray arrayWithArray:@[
    [_stack.topAnchor constraintEqualToAnchor:root.topAnchor],
    [_stack.bottomAnchor constraintEqualToAnchor:root.bottomAnchor],
    [_stack.leadingAnchor constraintEqualToAnchor:root.leadingAnchor],
    [_stack.trailingAnchor constraintEqualToAnchor:root.trailingAnchor],
    [root.widthAnchor constraintEqualToConstant:AwakePanelContent::width],
  ]];
  for (NSView* block in blocks) {
    if ([block isKindOfClass:NSBox.class] || block == _footer) {
      [constraints addObject:[block.widthAnchor constraintEqualToConstant:contentWidth()]];
    }
  }
  [NSLayoutConstraint activateConstraints:constraints];
  self.view = root;
}

- (void)cancelOperation:(id)sender {
  if (self.onCancel) self.onCancel();
}

- (void)focusFirstControl {
  if (NSView* first = PanelViews::firstKeyView(_stack)) [self.view.window makeFirstResponder:first];
}

- (void)render:(const AwakePanelContent&)content {
  requireMainThread("AwakePanel render");
  [self loadViewIfNeeded];

  // Texts change in place: they tick every second while a timer runs.
  _glyph.image = GlyphImages::awakeGlyph(content.header.glyph, headerGlyphSize);
  _title.stringValue = BundleTexts::string(content.header.title);
  _statusLine.stringValue = BundleTexts::string(content.statusLine);
  [_header setAccessibilityLabel:BundleTexts::string(content.header.spokenLabel(BundleTexts::lookup()))];
  _explanation.stringValue = BundleTexts::string(content.explanation);

  if (!_shown || _shown->automaticPause != content.automaticPause) [self renderAutomaticPause:content.automaticPause];
  if (!_shown || _shown->mainButton != content.mainButton) [self renderMainButton:content.mainButton];
  if (!_shown || _shown->sessionControls != content.sessionControls) [self renderSession:content.sessionControls];
  if (!_shown || _shown->screenOn != content.screenOn) [self renderScreenOn:content.screenOn];
  if (!_shown || _shown->deepwake != content.deepwake) [self renderDeepwake:content.deepwake];
  if (!_shown || _shown->retry != content.retry) [self renderRetry:content.retry];
  if (!_shown || _shown->login != content.login) [self renderLogin:content.login];
  // A switch the controllers refused goes back, even when nothing else moved.
  if (_deepwakeSwitch) PanelViews::setState(_deepwakeSwitch, content.deepwake.toggle);
  if (_loginSwitch) PanelViews::setState(_loginSwitch, content.login.toggle);
  if (_screenOnSwitch && content.screenOn) PanelViews::setState(_screenOnSwitch, content.screenOn->toggle);
  _shown = content;

  [self.view layoutSubtreeIfNeeded];
  self.preferredContentSize = self.view.fittingSize;
}

// Swaps the block's views; the keyboard focus, if it was inside, moves to the
// block's first control.
- (void)fill:(NSStackView*)block with:(NSArray<NSView*>*)views {
  NSResponder* focused = self.view.window.firstResponder;
  const BOOL hadFocus = [focused isKindOfClass:NSView.class] && [(NSView*)focused isDescendantOf:block];
  for (NSView* old in [block.arrangedSubviews copy]) [old removeFromSuperview];
  for (NSView* view in views) [block addArrangedSubview:view];
  // A hidden block takes no room and no spacing.
  block.hidden = views.count == 0;
  if (!hadFocus) return;
  if (NSView* first = PanelViews::firstKeyView(block)) [self.view.window makeFirstResponder:first];
}

- (void)renderMainButton:(const PanelButton&)button {
  NSButton* control = PanelViews::pushButton(button, NSControlSizeLarge, _perform);
  // Return presses it, and as the window's default button it is drawn prominent.
  control.keyEquivalent = @"\r";
  [control.widthAnchor constraintEqualToConstant:contentWidth()].active = YES;
  [self fill:_mainButtonBlock with:@[ control ]];
}

- (void)renderSession:(const AwakePanelContent::SessionControls&)controls {
  NSMutableArray<NSView*>* views = [NSMutableArray array];
  if (controls.cancelTimer) {
    [views addObject:PanelViews::pushButton(*controls.cancelTimer, NSControlSizeSmall, _perform)];
  } else if (!controls.presets.empty()) {
    if (controls.presetsCaption) {
      [views addObject:PanelViews::label(BundleTexts::string(*controls.presetsCaption),
                                         PanelViews::font(NSFontTextStyleSubheadline), NSColor.secondaryLabelColor)];
    }
    NSMutableArray<NSView*>* buttons = [NSMutableArray array];
    for (const auto& preset : controls.presets) {
      [buttons addObject:PanelViews::pushButton(preset, NSControlSizeSmall, _perform)];
    }
    [views addObject:row(buttons, 6)];
  }
  [self fill:_sessionBlock with:views];
}

- (void)renderDeepwake:(const AwakePanelContent::Deepwake&)deepwake {
  if (deepwake.isHidden) {
    _deepwakeSwitch = nil;
    [self fill:_deepwakeBlock with:@[]];
    return;
  }
  NSSwitch* toggle = nil;
  NSMutableArray<NSView*>* views = [NSMutableArray array];
  [views addObject:PanelViews::switchRow(deepwake.toggle, NSControlSizeRegular, contentWidth(), _perform, &toggle)];
  NSTextField* caption = PanelViews::wrappingLabel(BundleTexts::string(deepwake.caption),
                                                   PanelViews::font(NSFontTextStyleFootnote),
                                                   NSColor.secondaryLabelColor, contentWidth());
  // VoiceOver hears the caption as the switch's help, not twice.
  if (deepwake.toggle.accessibilityHelp == deepwake.caption) [caption setAccessibilityElement:NO];
  [views addObject:caption];
  // Both answers are buttons to click: the panel may have opened without
  // becoming active, where Return and Escape would go elsewhere.
  if (const auto& question = deepwake.automationQuestion) {
    const PanelNote asked{NoteSymbol::information, question->text};
    [views addObject:PanelViews::note(asked, NSColor.labelColor, contentWidth(), _perform)];
    [views addObject:row(@[
      PanelViews::pushButton(question->dontAllow, NSControlSizeSmall, _perform),
      PanelViews::pushButton(question->allow, NSControlSizeSmall, _perform)
    ],
                         6)];
  }
  for (const auto& note : {deepwake.location, deepwake.guardrail, deepwake.precaution, deepwake.failure}) {
    if (note) [views addObject:PanelViews::note(*note, noteColor(*note), contentWidth(), _perform)];
  }
  _deepwakeSwitch = toggle;
  [self fill:_deepwakeBlock with:views];
}

- (void)renderAutomaticPause:(const std::optional<PanelNote>&)pause {
  NSMutableArray<NSView*>* views = [NSMutableArray array];
  if (pause) [views addObject:PanelViews::note(*pause, noteColor(*pause), contentWidth(), _perform)];
  [self fill:_automaticBlock with:views];
}

- (void)renderRetry:(const AwakePanelContent::Retry&)retry {
  NSMutableArray<NSView*>* views = [NSMutableArray array];
  if (retry.dontRetry) [views addObject:PanelViews::linkButton(*retry.dontRetry, _perform)];
  if (retry.failure) {
    [views addObject:PanelViews::note(*retry.failure, noteColor(*retry.failure), contentWidth(), _perform)];
  }
  [self fill:_retryBlock with:views];
}

// Compact, as people change it per task; its help is VoiceOver's.
- (void)renderScreenOn:(const std::optional<AwakePanelContent::ScreenOn>&)screenOn {
  NSMutableArray<NSView*>* views = [NSMutableArray array];
  NSSwitch* toggle = nil;
  if (screenOn) {
    [views addObject:PanelViews::switchRow(screenOn->toggle, NSControlSizeSmall, contentWidth(), _perform, &toggle)];
    if (const auto& note = screenOn->failure) {
      [views addObject:PanelViews::note(*note, noteColor(*note), contentWidth(), _perform)];
    }
  }
  _screenOnSwitch = toggle;
  [self fill:_screenOnBlock with:views];
}

- (void)renderLogin:(const AwakePanelContent::Login&)login {
  NSSwitch* toggle = nil;
  NSMutableArray<NSView*>* views = [NSMutableArray array];
  [views addObject:PanelViews::switchRow(login.toggle, NSControlSizeSmall, contentWidth(), _perform, &toggle)];
  for (const auto& note : {login.approval, login.location, login.failure}) {
    if (note) [views addObject:PanelViews::note(*note, noteColor(*note), contentWidth(), _perform)];
  }
  _loginSwitch = toggle;
  [self fill:_loginBlock with:views];
}

@end
