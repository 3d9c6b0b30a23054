#import "SettingsMenuButton.h"

#include <optional>
#include <string>

#import "AboutPopup.h"
#import "AutomaticPopup.h"
#import "ActionHandler.h"
#include "BundleTexts.h"
#include "MainBundle.h"
#import "MenuAnchor.h"
#include "PanelViews.h"
#include "RunningAppLanguage.h"
#include "RunningSystemVersion.h"
#import "SafetyPopup.h"
#import "SettingsPopup.h"
#include "base/MainThread.h"
#include "prefs/AboutInfo.h"
#include "ui/SettingsMenu.h"

using namespace wakeloft;

namespace {

// The feedback page for this version, this system and the interface's
// language, in the user's browser.
void openFeedbackForm() {
  const auto address =
      SettingsMenu::feedbackAddress(AboutInfo::fromInfoDictionary(MainBundle::infoDictionary()),
                                    runningSystemVersion(), RunningAppLanguage::preferredLocalizations());
  if (NSURL* url = [NSURL URLWithString:BundleTexts::string(address)]) [NSWorkspace.sharedWorkspace openURL:url];
}

}  // namespace

@implementation SettingsMenuButton {
  std::shared_ptr<PresetDurationsController> _presets;
  std::shared_ptr<LidAwakeController> _lid;
  std::shared_ptr<DeepwakeAutomationConsent> _consent;
  std::shared_ptr<AutomaticSessionController> _automatic;
  std::shared_ptr<ScreenLockSetting> _screenLock;
  std::shared_ptr<UpdateReminder> _reminder;
  Subscription _reminderChanges;
  std::unique_ptr<SettingsMenu> _menu;
  NSView* _view;
  NSButton* _button;
  MenuAnchor* _anchor;
  // The popover shown, if any; one that closes after being replaced is not it.
  NSPopover* _popover;
}

- (instancetype)initWithPresets:(std::shared_ptr<PresetDurationsController>)presets
                            lid:(std::shared_ptr<LidAwakeController>)lid
                        consent:(std::shared_ptr<DeepwakeAutomationConsent>)consent
                      automatic:(std::shared_ptr<AutomaticSessionController>)automatic
                     screenLock:(std::shared_ptr<ScreenLockSetting>)screenLock
                 updateReminder:(std::shared_ptr<UpdateReminder>)reminder
                checkForUpdates:(void (^)(void))checkForUpdates {
  self = [super init];
  if (!self) return nil;
  _presets = std::move(presets);
  _lid = std::move(lid);
  _consent = std::move(consent);
  _automatic = std::move(automatic);
  _screenLock = std::move(screenLock);
  _reminder = std::move(reminder);
  void (^check)(void) = [checkForUpdates copy];
  _menu = std::make_unique<SettingsMenu>(SettingsMenu::Actions{
      .checkForUpdates = [check] { check(); },
      .sendFeedback = openFeedbackForm,
      // Through the application delegate, which may ask first.
      .quit = [] { [NSApp terminate:nil]; },
      .activate = [] { [NSApp activate]; },
  });
  [self buildView];
  __weak SettingsMenuButton* weakSelf = self;
  _reminderChanges = _reminder->changed().observe([weakSelf] { [weakSelf showWaitingUpdate]; });
  [self showWaitingUpdate];
  return self;
}

- (void)showWaitingUpdate {
  const auto& waiting = _reminder->waitingVersion();
  _button.image = PanelViews::symbol(SettingsMenu::buttonSymbolFor(waiting), NSFontTextStyleBody);
  [_button setAccessibilityLabel:BundleTexts::string(SettingsMenu::buttonAccessibilityLabel(waiting))];
}

- (NSView*)view {
  return _view;
}

- (void)buildView {
  const NSFontTextStyle style = NSFontTextStyleBody;
  _view = [[NSView alloc] init];
  _view.translatesAutoresizingMaskIntoConstraints = NO;
  _view.userInterfaceLayoutDirection = RunningAppLanguage::userInterfaceLayoutDirection();

  // Under the button, so the button takes every click.
  _anchor = [[MenuAnchor alloc] init];
  _anchor.translatesAutoresizingMaskIntoConstraints = NO;
  _anchor.userInterfaceLayoutDirection = RunningAppLanguage::userInterfaceLayoutDirection();
  [_view addSubview:_anchor];

  NSImageView* chevron = [[NSImageView alloc] init];
  chevron.image = PanelViews::symbol(SettingsMenu::buttonTrailingSymbol, NSFontTextStyleFootnote);
  chevron.contentTintColor = NSColor.secondaryLabelColor;
  chevron.translatesAutoresizingMaskIntoConstraints = NO;
  [chevron setAccessibilityElement:NO];
  [_view addSubview:chevron];

  // Borderless and as wide as the row: the whole row is the button, drawn
  // over the chevron.
  _button = [NSButton buttonWithTitle:BundleTexts::string(SettingsMenu::buttonTitle()) target:nil action:nil];
  _button.bordered = NO;
  _button.imagePosition = NSImageLeading;
  _button.imageHugsTitle = YES;
  _button.alignment = NSTextAlignmentNatural;
  _button.font = PanelViews::font(style);
  _button.translatesAutoresizingMaskIntoConstraints = NO;
  __weak SettingsMenuButton* weakSelf = self;
  [ActionHandler attachTo:_button
                   action:^(id) {
                     [weakSelf popUpMenu];
                   }];
  [_view addSubview:_button];

  [NSLayoutConstraint activateConstraints:@[
    [_view.heightAnchor constraintEqualToConstant:SettingsMenu::buttonHeight],
    [_button.topAnchor constraintEqualToAnchor:_view.topAnchor],
    [_button.bottomAnchor constraintEqualToAnchor:_view.bottomAnchor],
    [_button.leadingAnchor constraintEqualToAnchor:_view.leadingAnchor],
    [_button.trailingAnchor constraintEqualToAnchor:_view.trailingAnchor],
    [_anchor.topAnchor constraintEqualToAnchor:_view.topAnchor],
    [_anchor.bottomAnchor constraintEqualToAnchor:_view.bottomAnchor],
    [_anchor.leadingAnchor constraintEqualToAnchor:_view.leadingAnchor],
    [_anchor.trailingAnchor constraintEqualToAnchor:_view.trailingAnchor],
    [chevron.trailingAnchor constraintEqualToAnchor:_view.trailingAnchor],
    [chevron.centerYAnchor constraintEqualToAnchor:_view.centerYAnchor],
  ]];
}

- (void)popUpMenu {
  requireMainThread("SettingsMenuButton menu");
  NSMenu* menu = [[NSMenu alloc] initWithTitle:@""];
  menu.autoenablesItems = NO;
  menu.minimumWidth = SettingsMenu::minimumWidth;
  menu.userInterfaceLayoutDirection = RunningAppLanguage::userInterfaceLayoutDirection();
  __weak SettingsMenuButton* weakSelf = self;
  for (const auto& item : SettingsMenu::items(_reminder->waitingVersion())) {
    if (item.isSeparator() || !item.command) {
      [menu addItem:NSMenuItem.separatorItem];
      continue;
    }
    NSMenuItem* menuItem = [[NSMenuItem alloc] initWithTitle:BundleTexts::string(*item.title)
                                                      action:nil
                                               keyEquivalent:BundleTexts::string(item.keyEquivalent)];
    const SettingsMenu::Command command = *item.command;
    [ActionHandler attachToItem:menuItem
                         action:^(id) {
                           [weakSelf performCommand:command];
                         }];
    [menu addItem:menuItem];
  }

  const NSRect bounds = _anchor.bounds;
  const auto location =
      SettingsMenu::popUpLocation({bounds.origin.x, bounds.origin.y, bounds.size.width, bounds.size.height},
                                  RunningAppLanguage::layoutDirection());
  [menu popUpMenuPositioningItem:nil atLocation:NSMakePoint(location.x, location.y) inView:_anchor];
}

- (void)performCommand:(SettingsMenu::Command)command {
  _menu->perform(command);
  [self showPopup];
}

- (void)showPopup {
  const auto& popup = _menu->popup();
  if (!popup) return;
  NSViewController* content = nil;
  switch (*popup) {
    case SettingsMenu::Popup::settings: content = [[SettingsPopup alloc] initWithPresets:_presets]; break;
    case SettingsMenu::Popup::safety: content = [[SafetyPopup alloc] initWithLid:_lid consent:_consent]; break;
    case SettingsMenu::Popup::automatic:
      if (_automatic) content = [[AutomaticPopup alloc] initWithAutomatic:_automatic screenLock:_screenLock];
      break;
    case SettingsMenu::Popup::about: content = [[AboutPopup alloc] init]; break;
  }
  if (!content) {
    _menu->popupClosed();
    return;
  }
  NSPopover* previous = _popover;
  _popover = [[NSPopover alloc] init];
  _popover.behavior = NSPopoverBehaviorTransient;
  _popover.contentViewController = content;
  _popover.delegate = self;
  // One at a time: the one shown makes way.
  if (previous.shown) {
    previous.animates = NO;
    [previous close];
  }
  [_popover showRelativeToRect:_anchor.bounds ofView:_anchor preferredEdge:NSRectEdgeMinY];
}

- (void)popoverDidClose:(NSNotification*)notification {
  if (notification.object != _popover) return;
  _popover = nil;
  _menu->popupClosed();
}

@end
