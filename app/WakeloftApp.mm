#import "WakeloftApp.h"

#include <os/log.h>

#include <memory>

#include "BundleTexts.h"
#include "CFPropertyListParser.h"
#include "CodeSigningIdentity.h"
#include "DispatchProcessExitWatcher.h"
#include "DistributedAutomationOutcomePublisher.h"
#include "IOKitPowerAssertions.h"
#include "LibprocProcessTable.h"
#include "MainBundle.h"
#include "ManagedPreferencesWatcher.h"
#include "SMAppServiceLidHelperRegistration.h"
#include "SMAppServiceLoginItem.h"
#include "SystemDeadlineRecheckNotifier.h"
#include "SystemMachineConditions.h"
#include "SystemMachineConditionsNotifier.h"
#include "SystemScreenLockNotifier.h"
#include "UserDefaultsDomain.h"
#include "WorkspaceRunningApplications.h"
#include "XPCLidSleepBlocker.h"
#include "automation/PublishedAutomaticSession.h"
#include "automation/PublishedDeepwake.h"
#include "base/MainThread.h"
#include "helper/BundleVersion.h"
#include "helper/LidHelperService.h"
#include "lid/PublishedLidHelper.h"
#include "prefs/SystemTimeZoneProvider.h"
#include "clock/SystemContinuousTimeProvider.h"
#include "clock/SystemDateProvider.h"
#include "clock/TimerDeadlineScheduler.h"
#include "ui/AppControllers.h"
#include "ui/AutomationHandler.h"
#include "ui/ManagedSettings.h"
#include "ui/TextCatalog.h"

#import "MenuBarStatusItem.h"
#import "QuitConfirmationDelegate.h"
#import "SoftwareUpdate.h"

using namespace wakeloft;

namespace {

AppControllers::SystemParts systemParts() {
  return {
      .powerAssertions = [] { return std::make_shared<IOKitPowerAssertions>(); },
      .dates = [] { return std::make_shared<SystemDateProvider>(); },
      .continuousTime = [] { return std::make_shared<SystemContinuousTimeProvider>(); },
      .deadlineScheduler = [] { return std::make_shared<TimerDeadlineScheduler>(); },
      .recheckNotifier = [] { return std::make_shared<SystemDeadlineRecheckNotifier>(); },
      .bundlePath = [] { return MainBundle::realPath(); },
      .helperRegistration =
          [](std::string_view plistName) { return std::make_shared<SMAppServiceLidHelperRegistration>(plistName); },
      .teamIdentifier = [] { return CodeSigningIdentity::currentTeamIdentifier(); },
      .lidSleepBlocker =
          [](std::shared_ptr<LidHelperRegistration> registration, std::optional<std::string> requirement,
             double replyTimeout) {
            return std::make_shared<XPCLidSleepBlocker>(std::move(registration), std::move(requirement), replyTimeout);
          },
      .machineConditions = [] { return std::make_shared<SystemMachineConditions>(); },
      .conditionsNotifier = [] { return std::make_shared<SystemMachineConditionsNotifier>(); },
      .loginItem = [] { return std::make_shared<SMAppServiceLoginItem>(); },
      .processTable = [] { return std::make_shared<LibprocProcessTable>(); },
      .processExitWatcher = [] { return std::make_shared<DispatchProcessExitWatcher>(); },
      .screenLockNotifier = [] { return std::make_shared<SystemScreenLockNotifier>(); },
      .runningApplications = [] { return std::make_shared<WorkspaceRunningApplications>(); },
      .timeZones = [] { return std::make_shared<SystemTimeZoneProvider>(); },
  };
}

// Addresses the app could not follow, for Console and `log show`.
void logAutomation(const std::string& line) {
  static os_log_t log = os_log_create("com.wakeloft.app", "automation");
  os_log_error(log, "%{public}s", line.c_str());
}

// The standard user defaults; the stores keep a reference for the life of
// the process.
DefaultsDomain& standardDefaults() {
  static UserDefaultsDomain defaults;
  return defaults;
}

// The version of the helper this bundle carries, the one it registers.
std::optional<std::string> bundledHelperVersion() {
  NSString* bundle = NSBundle.mainBundle.bundlePath;
  if (!bundle.fileSystemRepresentation) return std::nullopt;
  const std::string helper = std::string(bundle.fileSystemRepresentation) + "/" + std::string(LidHelperService::bundleProgram);
  const auto version = BundleVersion::aroundExecutable(helper, CFPropertyListParser());
  return version ? std::optional<std::string>(version->text()) : std::nullopt;
}

// Strong, for the life of the process: NSApplication holds its delegate
// weakly, and the app value holds the delegate.
WakeloftApp* theApp = nil;

}  // namespace

@implementation WakeloftApp {
  QuitConfirmationDelegate* _quitConfirmation;
  Controllers _controllers;
  MenuBarStatusItem* _menuBarItem;
  id<NSObject> _launchObserver;
  std::unique_ptr<PublishedDeepwake> _publishedDeepwake;
  std::unique_ptr<PublishedAutomaticSession> _publishedAutomatic;
  std::unique_ptr<PublishedLidHelper> _publishedLidHelper;
  std::unique_ptr<ManagedSettings> _managedSettings;
  std::unique_ptr<AutomationHandler> _automation;
  // An address asked for the panel before the scene was in the menu bar.
  BOOL _panelWanted;
}

+ (void)launch {
  requireMainThread("WakeloftApp launch");
  if (theApp) return;
  theApp = [[WakeloftApp alloc] init];
}

+ (Controllers)live {
  return AppControllers::live(systemParts(), standardDefaults());
}

- (instancetype)init {
  self = [super init];
  if (!self) return nil;

  _quitConfirmation = [[QuitConfirmationDelegate alloc] init];
  NSApp.delegate = _quitConfirmation;

  _controllers = [WakeloftApp live];

  // A second app value must never swap the controllers the delegate quits with.
  if (!_quitConfirmation.hasControllers) {
    [_quitConfirmation attachAwake:_controllers.awake lid:_controllers.lid binding:_controllers.binding];
  }

  // The command reads Deepwake's state, which nothing else stores.
  _publishedDeepwake = std::make_unique<PublishedDeepwake>(_controllers.lid, standardDefaults());
  // Nor does anything store why an automatic session runs.
  if (_controllers.automatic) {
    _publishedAutomatic =
        std::make_unique<PublishedAutomaticSession>(_controllers.awake, _controllers.automatic, standardDefaults());
  }
  // The helper's registration only answers inside this bundle, so the
  // command's doctor reads it, and the helper's version, from here.
  auto registration = std::make_shared<SMAppServiceLidHelperRegistration>(LidHelperService::plistName);
  _publishedLidHelper =
      std::make_unique<PublishedLidHelper>(_controllers.lid, registration, bundledHelperVersion(), standardDefaults());
  // A profile that arrives or changes while the app runs applies at once.
  PublishedLidHelper* published = _publishedLidHelper.get();
  _managedSettings = std::make_unique<ManagedSettings>(
      _controllers, registration,
      std::make_shared<ManagedPreferencesWatcher>(std::string(LidHelperService::appIdentifier)),
      [published] { published->update(); });
  __weak WakeloftApp* weakApp = self;
  _automation = std::make_unique<AutomationHandler>(
      _controllers,
      [weakApp] {
        WakeloftApp* strongApp = weakApp;
        [strongApp showPanelForAutomation];
      },
      logAutomation, std::make_shared<DistributedAutomationOutcomePublisher>());
  // The delegate lives no longer than this app value, which owns both.
  AutomationHandler* automation = _automation.get();
  [_quitConfirmation followAddressesWith:[automation](std::string_view address) { automation->open(address); }];

  // Making the shared updater starts it.
  SoftwareUpdate.shared.quitConfirmation = _quitConfirmation;

  // The scene goes into the menu bar once the application has launched.
  __weak WakeloftApp* weakSelf = self;
  _launchObserver = [NSNotificationCenter.defaultCenter addObserverForName:NSApplicationDidFinishLaunchingNotification
                                                                    object:NSApp
                                                                     queue:NSOperationQueue.mainQueue
                                                                usingBlock:^(NSNotification*) {
                                                                  [weakSelf showScene];
                                                                }];
  return self;
}

- (void)showScene {
  requireMainThread("WakeloftApp scene");
  [NSNotificationCenter.defaultCenter removeObserver:_launchObserver];
  _launchObserver = nil;
  if (_menuBarItem) return;
  [WakeloftApp installMainMenu];
  _menuBarItem = [[MenuBarStatusItem alloc] initWithControllers:_controllers];
  if (_panelWanted) {
    _panelWanted = NO;
    [_menuBarItem showPanel];
  }
}

- (void)showPanelForAutomation {
  requireMainThread("WakeloftApp automation panel");
  if (_menuBarItem) {
    [_menuBarItem showPanel];
  } else {
    _panelWanted = YES;
  }
}

// Never shown for a menu-bar app, but it answers Command-Q while the panel
// has the keyboard, through the same quit confirmation as the settings menu.
+ (void)installMainMenu {
  NSMenu* appMenu = [[NSMenu alloc] initWithTitle:@""];
  [appMenu addItemWithTitle:BundleTexts::string(TextCatalog::quitWakeloft)
                     action:@selector(terminate:)
              keyEquivalent:@"q"];
  NSMenuItem* appItem = [[NSMenuItem alloc] initWithTitle:@"" action:nil keyEquivalent:@""];
  appItem.submenu = appMenu;
  NSMenu* mainMenu = [[NSMenu alloc] initWithTitle:@""];
  [mainMenu addItem:appItem];
  NSApp.mainMenu = mainMenu;
}

@end
