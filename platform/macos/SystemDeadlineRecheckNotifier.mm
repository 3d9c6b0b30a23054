#include "SystemDeadlineRecheckNotifier.h"

#import <AppKit/AppKit.h>
#include <CoreFoundation/CoreFoundation.h>
#import <Foundation/Foundation.h>

#include "base/MainThread.h"

namespace wakeloft {

struct SystemDeadlineRecheckNotifier::Observers {
  NSNotificationCenter* workspaceCenter = NSWorkspace.sharedWorkspace.notificationCenter;
  NSNotificationCenter* defaultCenter = NSNotificationCenter.defaultCenter;
  id<NSObject> wakeToken = nil;
  id<NSObject> clockToken = nil;
  id<NSObject> zoneToken = nil;
};

SystemDeadlineRecheckNotifier::SystemDeadlineRecheckNotifier() : observers_(std::make_unique<Observers>()) {}

SystemDeadlineRecheckNotifier::~SystemDeadlineRecheckNotifier() { stopObserving(); }

void SystemDeadlineRecheckNotifier::observe(std::function<void()> handler) {
  requireMainThread("SystemDeadlineRecheckNotifier::observe");
  stopObserving();

  // Shared, so a delivery already on its way to the main queue keeps the
  // handler alive after the observers are gone.
  const auto shared = std::make_shared<const std::function<void()>>(std::move(handler));
  void (^deliver)(NSNotification*) = ^(NSNotification*) {
    if (isMainThread()) {
      (*shared)();
      return;
    }
    dispatch_async(dispatch_get_main_queue(), ^{
      requireMainThread("SystemDeadlineRecheckNotifier's handler");
      (*shared)();
    });
  };

  observers_->wakeToken = [observers_->workspaceCenter addObserverForName:NSWorkspaceDidWakeNotification
                                                                   object:nil
                                                                    queue:nil
                                                               usingBlock:deliver];
  observers_->clockToken = [observers_->defaultCenter addObserverForName:NSSystemClockDidChangeNotification
                                                                  object:nil
                                                                   queue:nil
                                                              usingBlock:deliver];
  // The system zone is cached until reset, and observers are told in no set
  // order: reset it here so the handler reads the new one.
  observers_->zoneToken = [observers_->defaultCenter addObserverForName:NSSystemTimeZoneDidChangeNotification
                                                                 object:nil
                                                                  queue:nil
                                                             usingBlock:^(NSNotification* notification) {
                                                               CFTimeZoneResetSystem();
                                                               deliver(notification);
                                                             }];
}

void SystemDeadlineRecheckNotifier::stopObserving() {
  if (observers_->wakeToken) {
    [observers_->workspaceCenter removeObserver:observers_->wakeToken];
    observers_->wakeToken = nil;
  }
  if (observers_->clockToken) {
    [observers_->defaultCenter removeObserver:observers_->clockToken];
    observers_->clockToken = nil;
  }
  if (observers_->zoneToken) {
    [observers_->defaultCenter removeObserver:observers_->zoneToken];
    observers_->zoneToken = nil;
  }
}

}  // namespace wakeloft
