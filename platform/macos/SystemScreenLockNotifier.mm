#include "SystemScreenLockNotifier.h"

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>

#include "base/MainThread.h"

namespace wakeloft {
namespace {

// Posted by the system when the screen locks and unlocks. Neither name is in
// the SDK's headers nor in Apple's documentation, but both have been posted
// for many releases and are what there is to hear a lock by.
NSString* const screenIsLockedName = @"com.apple.screenIsLocked";
NSString* const screenIsUnlockedName = @"com.apple.screenIsUnlocked";

}  // namespace

struct SystemScreenLockNotifier::Observers {
  NSDistributedNotificationCenter* distributedCenter = NSDistributedNotificationCenter.defaultCenter;
  // Session switches are posted only to the workspace's own centre.
  NSNotificationCenter* workspaceCenter = NSWorkspace.sharedWorkspace.notificationCenter;
  NSMutableArray<id<NSObject>>* distributedTokens = [NSMutableArray array];
  NSMutableArray<id<NSObject>>* workspaceTokens = [NSMutableArray array];
};

SystemScreenLockNotifier::SystemScreenLockNotifier() : observers_(std::make_unique<Observers>()) {}

SystemScreenLockNotifier::~SystemScreenLockNotifier() { stopObserving(); }

void SystemScreenLockNotifier::observe(std::function<void(Event)> handler) {
  requireMainThread("SystemScreenLockNotifier::observe");
  stopObserving();

  // Shared, so a delivery already queued keeps the handler alive after the
  // observers are gone.
  const auto shared = std::make_shared<const std::function<void(Event)>>(std::move(handler));
  const auto listen = [&](NSNotificationCenter* centre, NSMutableArray<id<NSObject>>* tokens, NSString* name,
                          Event event) {
    [tokens addObject:[centre addObserverForName:name
                                          object:nil
                                           queue:NSOperationQueue.mainQueue
                                      usingBlock:^(NSNotification*) {
                                        requireMainThread("a screen-lock notification");
                                        (*shared)(event);
                                      }]];
  };
  listen(observers_->distributedCenter, observers_->distributedTokens, screenIsLockedName, Event::screenLocked);
  listen(observers_->distributedCenter, observers_->distributedTokens, screenIsUnlockedName, Event::screenUnlocked);
  listen(observers_->workspaceCenter, observers_->workspaceTokens, NSWorkspaceSessionDidResignActiveNotification,
         Event::sessionSwitchedOut);
  listen(observers_->workspaceCenter, observers_->workspaceTokens, NSWorkspaceSessionDidBecomeActiveNotification,
         Event::sessionSwitchedIn);
}

void SystemScreenLockNotifier::stopObserving() {
  for (id<NSObject> token in observers_->distributedTokens) [observers_->distributedCenter removeObserver:token];
  for (id<NSObject> token in observers_->workspaceTokens) [observers_->workspaceCenter removeObserver:token];
  [observers_->distributedTokens removeAllObjects];
  [observers_->workspaceTokens removeAllObjects];
}

}  // namespace wakeloft
