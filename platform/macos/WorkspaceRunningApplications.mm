#include "WorkspaceRunningApplications.h"

#import <AppKit/AppKit.h>

#include <sys/types.h>

#include <map>

#include "base/MainThread.h"

namespace wakeloft {

namespace {

// Only apps the launch and quit notifications are posted for.
bool isAnnounced(NSRunningApplication* app) {
  return app.activationPolicy == NSApplicationActivationPolicyRegular && app.bundleIdentifier.UTF8String;
}

}  // namespace

struct WorkspaceRunningApplications::Observation {
  // By process: two copies of one app quit one at a time.
  std::map<pid_t, std::string> apps;
  std::function<void()> handler;
  id<NSObject> launchToken = nil;
  id<NSObject> quitToken = nil;
};

WorkspaceRunningApplications::WorkspaceRunningApplications() : observation_(std::make_shared<Observation>()) {
  requireMainThread("WorkspaceRunningApplications");
  for (NSRunningApplication* app in NSWorkspace.sharedWorkspace.runningApplications) {
    if (isAnnounced(app)) observation_->apps[app.processIdentifier] = app.bundleIdentifier.UTF8String;
  }
  // Workspace notifications reach only observers of the workspace's own centre.
  NSNotificationCenter* centre = NSWorkspace.sharedWorkspace.notificationCenter;
  const std::weak_ptr<Observation> weak = observation_;
  const auto changed = ^(NSNotification* notification, bool launched) {
    requireMainThread("a workspace app notification");
    const auto observation = weak.lock();
    id object = notification.userInfo[NSWorkspaceApplicationKey];
    if (!observation || ![object isKindOfClass:NSRunningApplication.class]) return;
    NSRunningApplication* app = object;
    if (launched) {
      if (!isAnnounced(app)) return;
      observation->apps[app.processIdentifier] = app.bundleIdentifier.UTF8String;
    } else if (observation->apps.erase(app.processIdentifier) == 0) {
      return;
    }
    if (observation->handler) observation->handler();
  };
  observation_->launchToken = [centre addObserverForName:NSWorkspaceDidLaunchApplicationNotification
                                                  object:nil
                                                   queue:NSOperationQueue.mainQueue
                                              usingBlock:^(NSNotification* notification) {
                                                changed(notification, true);
                                              }];
  observation_->quitToken = [centre addObserverForName:NSWorkspaceDidTerminateApplicationNotification
                                                object:nil
                                                 queue:NSOperationQueue.mainQueue
                                            usingBlock:^(NSNotification* notification) {
                                              changed(notification, false);
                                            }];
}

WorkspaceRunningApplications::~WorkspaceRunningApplications() {
  NSNotificationCenter* centre = NSWorkspace.sharedWorkspace.notificationCenter;
  if (observation_->launchToken) [centre removeObserver:observation_->launchToken];
  if (observation_->quitToken) [centre removeObserver:observation_->quitToken];
}

std::vector<std::string> WorkspaceRunningApplications::bundleIdentifiers() const {
  std::vector<std::string> identifiers;
  for (const auto& [pid, identifier] : observation_->apps) identifiers.push_back(identifier);
  return identifiers;
}

void WorkspaceRunningApplications::observe(std::function<void()> handler) {
  requireMainThread("WorkspaceRunningApplications::observe");
  observation_->handler = std::move(handler);
}

}  // namespace wakeloft
