#include "SystemMachineConditionsNotifier.h"

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>
#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/ps/IOPowerSources.h>

#include "CFOwned.h"
#include "base/MainThread.h"

namespace wakeloft {
namespace {

// The modes the power source runs in: the common ones, and menu tracking, so
// that a change is noticed while a menu is open.
template <typename Body>
void forEachPowerSourceMode(Body body) {
  body(kCFRunLoopCommonModes);
  body((__bridge CFStringRef)NSEventTrackingRunLoopMode);
}

void runHandler(void* context) { (*static_cast<const std::function<void()>*>(context))(); }

}  // namespace

struct SystemMachineConditionsNotifier::Observation {
  // Shared with the screen block, which the centre may still hold for a
  // moment after removal.
  std::shared_ptr<const std::function<void()>> handler;
  CFOwned<CFRunLoopSourceRef> powerSource;
  id<NSObject> screenToken = nil;
};

SystemMachineConditionsNotifier::SystemMachineConditionsNotifier() : observation_(std::make_unique<Observation>()) {}

SystemMachineConditionsNotifier::~SystemMachineConditionsNotifier() { stopObserving(); }

void SystemMachineConditionsNotifier::observe(std::function<void()> handler) {
  requireMainThread("SystemMachineConditionsNotifier::observe");
  stopObserving();
  observation_->handler = std::make_shared<const std::function<void()>>(std::move(handler));

  const auto shared = observation_->handler;
  observation_->screenToken =
      [NSNotificationCenter.defaultCenter addObserverForName:NSApplicationDidChangeScreenParametersNotification
                                                      object:nil
                                                       queue:nil
                                                  usingBlock:^(NSNotification*) {
                                                    requireMainThread("the screen-parameter notification");
                                                    (*shared)();
                                                  }];

  // The context is the handler itself; the source is removed before the
  // handler is replaced or dropped, and both happen on the main thread.
  CFRunLoopSourceRef source = IOPSNotificationCreateRunLoopSource(
      runHandler, const_cast<void*>(static_cast<const void*>(observation_->handler.get())));
  if (!source) return;
  observation_->powerSource = CFOwned<CFRunLoopSourceRef>(source);
  forEachPowerSourceMode([&](CFStringRef mode) { CFRunLoopAddSource(CFRunLoopGetMain(), source, mode); });
}

void SystemMachineConditionsNotifier::stopObserving() {
  if (observation_->screenToken) {
    [NSNotificationCenter.defaultCenter removeObserver:observation_->screenToken];
    observation_->screenToken = nil;
  }
  if (observation_->powerSource) {
    const CFRunLoopSourceRef source = observation_->powerSource.get();
    forEachPowerSourceMode([&](CFStringRef mode) { CFRunLoopRemoveSource(CFRunLoopGetMain(), source, mode); });
    observation_->powerSource = CFOwned<CFRunLoopSourceRef>();
  }
  observation_->handler.reset();
}

}  // namespace wakeloft
