#import "QuitConfirmationDelegate.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "BundleTexts.h"
#include "NSStringText.h"
#include "RunningAppLanguage.h"
#include "base/MainThread.h"
#include "ui/QuitAppleEvent.h"
#include "ui/QuitConfirmationAlert.h"
#include "ui/QuitFlow.h"

using namespace wakeloft;

namespace {

// AppKit lays an alert out lazily and gives its views the application's
// direction; the alert's own is set on every view once it is laid out.
void setLayoutDirection(NSView* view, NSUserInterfaceLayoutDirection direction) {
  view.userInterfaceLayoutDirection = direction;
  for (NSView* subview in view.subviews) setLayoutDirection(subview, direction);
}

NSAlert* makeAlert(const QuitConfirmationAlert& content) {
  NSAlert* alert = [[NSAlert alloc] init];
  alert.alertStyle = NSAlertStyleInformational;
  alert.messageText = BundleTexts::string(content.title);
  alert.informativeText = BundleTexts::string(content.message);
  // The confirm button comes first, so it answers Return; Cancel is given
  // Escape in every language, not only where it is called "Cancel".
  for (const auto& button : content.buttons) {
    NSButton* added = [alert addButtonWithTitle:BundleTexts::string(button.title)];
    if (!button.keyEquivalent.empty()) added.keyEquivalent = BundleTexts::string(button.keyEquivalent);
  }
  if (content.layoutDirection == LayoutDirection::rightToLeft) {
    [alert layout];
    setLayoutDirection(alert.window.contentView, NSUserInterfaceLayoutDirectionRightToLeft);
  }
  return alert;
}

bool askByAlert(const QuitConfirmation& confirmation) {
  const auto content =
      QuitConfirmationAlert::make(confirmation, RunningAppLanguage::locale(), RunningAppLanguage::layoutDirection());
  if (!content) return true;
  NSAlert* alert = makeAlert(*content);
  // A menu-bar app is not in front; without this the alert would open behind
  // the active app's windows.
  [NSApp activate];
  const NSModalResponse response = [alert runModal];
  return response >= NSAlertFirstButtonReturn &&
         QuitConfirmationAlert::isConfirmed(static_cast<std::size_t>(response - NSAlertFirstButtonReturn));
}

std::optional<QuitAppleEvent> currentAppleEvent() {
  NSAppleEventDescriptor* event = NSAppleEventManager.sharedAppleEventManager.currentAppleEvent;
  if (!event) return std::nullopt;
  QuitAppleEvent read{event.eventClass, event.eventID, std::nullopt, std::nullopt};
  if (NSAppleEventDescriptor* parameter = [event paramDescriptorForKeyword:QuitAppleEvent::quitReasonKeyword]) {
    read.reasonParameter = parameter.enumCodeValue;
  }
  if (NSAppleEventDescriptor* attribute = [event attributeDescriptorForKeyword:QuitAppleEvent::quitReasonKeyword]) {
    read.reasonAttribute = attribute.enumCodeValue;
  }
  return read;
}

NSApplicationTerminateReply applicationReply(TerminateReply reply) {
  switch (reply) {
    case TerminateReply::now: return NSTerminateNow;
    case TerminateReply::cancel: return NSTerminateCancel;
    case TerminateReply::later: return NSTerminateLater;
  }
  return NSTerminateNow;
}

}  // namespace

@implementation QuitConfirmationDelegate {
  std::unique_ptr<QuitFlow> _flow;
  std::function<void(std::string_view)> _followAddress;
  std::vector<std::string> _waitingAddresses;
  // The app that was in front before this one, which gets the keyboard back.
  NSRunningApplication* _previousApp;
  id<NSObject> _activationObserver;
}

- (instancetype)init {
  requireMainThread("QuitConfirmationDelegate");
  self = [super init];
  if (self) {
    _flow = std::make_unique<QuitFlow>(
        askByAlert, [] { return QuitAppleEvent::isSystemQuit(currentAppleEvent()); },
        [](bool quit) { [NSApp replyToApplicationShouldTerminate:quit]; });
    [self followActivations];
  }
  return self;
}

- (void)dealloc {
  if (_activationObserver) [NSWorkspace.sharedWorkspace.notificationCenter removeObserver:_activationObserver];
}

- (void)followActivations {
  NSRunningApplication* me = NSRunningApplication.currentApplication;
  NSRunningApplication* front = NSWorkspace.sharedWorkspace.frontmostApplication;
  if (front && ![front isEqual:me]) _previousApp = front;
  __weak QuitConfirmationDelegate* weakSelf = self;
  void (^activated)(NSNotification*) = ^(NSNotification* note) {
    NSRunningApplication* app = note.userInfo[NSWorkspaceApplicationKey];
    QuitConfirmationDelegate* strongSelf = weakSelf;
    if (strongSelf && [app isKindOfClass:NSRunningApplication.class] && ![app isEqual:me]) {
      strongSelf->_previousApp = app;
    }
  };
  _activationObserver =
      [NSWorkspace.sharedWorkspace.notificationCenter addObserverForName:NSWorkspaceDidActivateApplicationNotification
                                                                  object:nil
                                                                   queue:NSOperationQueue.mainQueue
                                                              usingBlock:activated];
}

// Launch Services brings the app to the front with an address unless its
// sender asked it not to (`open -g`, the wakeloft command). Wakeloft itself
// asks to be in front only to show a window: the panel, an alert, an update.
// In front with none of them, the user's app gets the keyboard back.
- (void)applicationDidBecomeActive:(NSNotification*)notification {
  for (NSWindow* window in NSApp.windows) {
    // The status item's own window can never become key.
    if (window.visible && window.canBecomeKeyWindow) return;
  }
  NSRunningApplication* previous = _previousApp;
  if (!previous || previous.terminated) return;
  [NSApp yieldActivationToApplication:previous];
  [previous activateFromApplication:NSRunningApplication.currentApplication options:0];
}

- (void)attachAwake:(std::shared_ptr<AwakeController>)awake
                lid:(std::shared_ptr<LidAwakeController>)lid
            binding:(std::shared_ptr<const ProcessBindingController>)binding {
  requireMainThread("QuitConfirmationDelegate attach");
  _flow->attach(std::move(awake), std::move(lid), std::move(binding));
}

- (BOOL)hasControllers {
  return _flow->hasControllers();
}

- (BOOL)isRelaunchingForUpdate {
  return _flow->isRelaunchingForUpdate();
}

- (void)setRelaunchingForUpdate:(BOOL)relaunching {
  requireMainThread("QuitConfirmationDelegate relaunch");
  _flow->setRelaunchingForUpdate(relaunching);
}

- (void)followAddressesWith:(std::function<void(std::string_view)>)follow {
  requireMainThread("QuitConfirmationDelegate addresses");
  _followAddress = std::move(follow);
  for (const auto& address : std::exchange(_waitingAddresses, {})) _followAddress(address);
}

// Opening an address shows no window: the handler decides whether the panel
// has something to say.
- (void)application:(NSApplication*)application openURLs:(NSArray<NSURL*>*)urls {
  requireMainThread("application:openURLs:");
  for (NSURL* url in urls) {
    const std::string address = utf8(url.absoluteString);
    if (_followAddress) {
      _followAddress(address);
    } else {
      _waitingAddresses.push_back(address);
    }
  }
}

- (NSApplicationTerminateReply)applicationShouldTerminate:(NSApplication*)sender {
  requireMainThread("applicationShouldTerminate");
  return applicationReply(_flow->shouldTerminate());
}

@end
