#import "MenuBarStatusItem.h"

#import <ServiceManagement/ServiceManagement.h>

#include <memory>

#import "AwakePanel.h"
#import "SettingsMenuButton.h"
#import "SoftwareUpdate.h"
#include "BundleTexts.h"
#include "GlyphImages.h"
#include "RunningAppLanguage.h"
#include "RunningSystemVersion.h"
#include "base/MainThread.h"
#include "clock/SystemDateProvider.h"
#include "clock/TimerDeadlineScheduler.h"
#include "ui/MenuBarScene.h"

using namespace wakeloft;

@implementation MenuBarStatusItem {
  NSStatusItem* _statusItem;
  NSPopover* _popover;
  AwakePanel* _panel;
  SettingsMenuButton* _settings;
  std::unique_ptr<MenuBarScene> _scene;
  // Set while the panel opens: its first control takes the keyboard once its
  // window has become key.
  BOOL _focusWhenKey;
}

- (instancetype)initWithControllers:(Controllers)controllers {
  requireMainThread("MenuBarStatusItem");
  self = [super init];
  if (!self) return nil;
  __weak MenuBarStatusItem* weakSelf = self;

  _statusItem = [NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength];
  _statusItem.button.target = self;
  _statusItem.button.action = @selector(togglePanel:);

  _settings = [[SettingsMenuButton alloc] initWithPresets:controllers.presets
                                                      lid:controllers.lid
                                                  consent:controllers.consent
                                                automatic:controllers.automatic
                                               screenLock:controllers.screenLock
                                           updateReminder:SoftwareUpdate.shared.reminder
                                          checkForUpdates:^{
                                            [SoftwareUpdate.shared checkForUpdates];
                                          }];
  // Each lambda copies a weak reference of its own: copying one into several
  // would read it again each time.
  __weak MenuBarStatusItem* weakPerformer = self;
  _panel = [[AwakePanel alloc]
      initWithPerform:[weakPerformer](const PanelAction& action) {
        MenuBarStatusItem* strongSelf = weakPerformer;
        if (strongSelf) strongSelf->_scene->perform(action);
      }
               footer:_settings.view];
  _panel.onBecomeKey = ^{
    MenuBarStatusItem* strongSelf = weakSelf;
    if (!strongSelf || !strongSelf->_popover.shown) return;
    strongSelf->_scene->panelBecameKey();
    if (strongSelf->_focusWhenKey) {
      strongSelf->_focusWhenKey = NO;
      [strongSelf->_panel focusFirstControl];
    }
  };
  _panel.onCancel = ^{
    [weakSelf closePanel];
  };

  _popover = [[NSPopover alloc] init];
  _popover.behavior = NSPopoverBehaviorTransient;
  _popover.animates = YES;
  _popover.contentViewController = _panel;
  _popover.delegate = self;

  __weak MenuBarStatusItem* weakIconShower = self;
  __weak MenuBarStatusItem* weakPanelShower = self;
  MenuBarScene::Views views{
      .showIcon =
          [weakIconShower](const MenuBarIcon& icon, const LocalizedText& label) {
            MenuBarStatusItem* strongSelf = weakIconShower;
            if (!strongSelf) return;
            NSStatusBarButton* button = strongSelf->_statusItem.button;
            button.image = GlyphImages::menuBarIcon(icon, RunningAppLanguage::layoutDirection());
            [button setAccessibilityLabel:BundleTexts::string(label)];
          },
      .showPanel =
          [weakPanelShower](const AwakePanelContent& content) {
            MenuBarStatusItem* strongSelf = weakPanelShower;
            if (strongSelf) [strongSelf->_panel render:content];
          },
      .openLoginItemsSettings =
          [] {
            // The pane's address, since the call alone is reported to do
            // nothing for an app without a Dock icon.
            NSURL* pane = [NSURL URLWithString:@"x-apple.systempreferences:com.apple.LoginItems-Settings.extension"];
            if (!pane || ![NSWorkspace.sharedWorkspace openURL:pane]) [SMAppService openSystemSettingsLoginItems];
          },
      .revealApplicationsFolder =
          [] {
            // As if the folder were double-clicked: a Finder window to drag
            // the app into.
            NSURL* applications = [NSFileManager.defaultManager URLsForDirectory:NSApplicationDirectory
                                                                       inDomains:NSLocalDomainMask]
                                      .firstObject;
            if (applications) [NSWorkspace.sharedWorkspace openURL:applications];
          },
      .lookup = BundleTexts::lookup(),
  };
  _scene = std::make_unique<MenuBarScene>(std::move(controllers), SoftwareUpdate.shared.reminder,
                                          RunningAppLanguage::locale(), runningSystemVersion(),
                                          std::make_shared<SystemDateProvider>(),
                                          std::make_shared<TimerDeadlineScheduler>(), std::move(views));
  return self;
}

- (void)togglePanel:(id)sender {
  requireMainThread("MenuBarStatusItem toggle");
  if (_popover.shown) {
    [self closePanel];
    return;
  }
  NSStatusBarButton* button = _statusItem.button;
  if (!button) return;
  // Up to date and rendered before it shows, so it opens at its size.
  _scene->panelWillOpen();
  // In front before the popover shows: a transient popover of an accessory
  // app that is not active can close itself on the next event.
  [NSApp activate];
  _focusWhenKey = YES;
  [_popover showRelativeToRect:button.bounds ofView:button preferredEdge:NSRectEdgeMinY];
  NSWindow* panelWindow = _popover.contentViewController.view.window;
  [panelWindow makeKeyWindow];
  // Already key, so no notice of it will come.
  if (panelWindow.keyWindow && _focusWhenKey) {
    _focusWhenKey = NO;
    [_panel focusFirstControl];
  }
}

- (void)showPanel {
  if (!_popover.shown) [self togglePanel:nil];
}

- (void)closePanel {
  [_popover performClose:nil];
}

- (void)popoverDidClose:(NSNotification*)notification {
  _focusWhenKey = NO;
  _scene->panelDidClose();
}

@end
