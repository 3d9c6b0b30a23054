#include "SystemMachineConditionsNotifier.h"

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>
#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/IOKitLib.h>
#include <IOKit/IOMessage.h>
#include <IOKit/ps/IOPowerSources.h>
#include <IOKit/pwr_mgt/IOPM.h>

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

// The root power domain tells its interested clients of every clamshell
// change; other messages of its are not ours.
void clamshellMessage(void* context, io_service_t, natural_t messageType, void*) {
  if (messageType == kIOPMMessageClamshellStateChange) runHandler(context);
}

}  // namespace

struct SystemMachineConditionsNotifier::Observation {
  // Shared with the screen block, which the centre may still hold for a
  // moment after removal.
  std::shared_ptr<const std::function<void()>> handler;
  CFOwned<CFRunLoopSourceRef> powerSource;
  id<NSObject> screenToken = nil;
  id<NSObject> lowPowerModeToken = nil;
  id<NSObject> thermalToken = nil;
  IONotificationPortRef clamshellPort = nullptr;
  io_object_t clamshellInterest = IO_OBJECT_NULL;
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

  // The process information posts these on whatever thread noticed the
  // change; the main queue brings them here.
  const auto onMain = ^(NSNotification*) {
    requireMainThread("a process-information notification");
    (*shared)();
  };
  NSNotificationCenter* centre = NSNotificationCenter.defaultCenter;
  observation_->lowPowerModeToken = [centre addObserverForName:NSProcessInfoPowerStateDidChangeNotification
                                                        object:nil
                                                         queue:NSOperationQueue.mainQueue
                                                    usingBlock:onMain];
  observation_->thermalToken = [centre addObserverForName:NSProcessInfoThermalStateDidChangeNotification
                                                   object:nil
                                                    queue:NSOperationQueue.mainQueue
                                               usingBlock:onMain];

  // The contexts are the handler itself; the sources are removed before the
  // handler is replaced or dropped, and all of it happens on the main thread.
  void* context = const_cast<void*>(static_cast<const void*>(observation_->handler.get()));
  observeClamshell(context);
  CFRunLoopSourceRef source = IOPSNotificationCreateRunLoopSource(runHandler, context);
  if (!source) return;
  observation_->powerSource = CFOwned<CFRunLoopSourceRef>(source);
  forEachPowerSourceMode([&](CFStringRef mode) { CFRunLoopAddSource(CFRunLoopGetMain(), source, mode); });
}

void SystemMachineConditionsNotifier::observeClamshell(void* context) {
  const io_service_t rootDomain = IOServiceGetMatchingService(kIOMainPortDefault, IOServiceMatching("IOPMrootDomain"));
  if (rootDomain == IO_OBJECT_NULL) return;
  IONotificationPortRef port = IONotificationPortCreate(kIOMainPortDefault);
  if (port) {
    io_object_t interest = IO_OBJECT_NULL;
    if (IOServiceAddInterestNotification(port, rootDomain, kIOGeneralInterest, clamshellMessage, context, &interest) ==
        KERN_SUCCESS) {
      observation_->clamshellPort = port;
      observation_->clamshellInterest = interest;
      // The port owns its source; it goes when the port is destroyed.
      forEachPowerSourceMode([&](CFStringRef mode) {
        CFRunLoopAddSource(CFRunLoopGetMain(), IONotificationPortGetRunLoopSource(port), mode);
      });
    } else {
      IONotificationPortDestroy(port);
    }
  }
  IOObjectRelease(rootDomain);
}

void SystemMachineConditionsNotifier::stopObserving() {
  for (id<NSObject> __strong* token :
       {&observation_->screenToken, &observation_->lowPowerModeToken, &observation_->thermalToken}) {
    if (!*token) continue;
    [NSNotificationCenter.defaultCenter removeObserver:*token];
    *token = nil;
  }
  if (observation_->clamshellPort) {
    const CFRunLoopSourceRef source = IONotificationPortGetRunLoopSource(observation_->clamshellPort);
    forEachPowerSourceMode([&](CFStringRef mode) { CFRunLoopRemoveSource(CFRunLoopGetMain(), source, mode); });
    IOObjectRelease(observation_->clamshellInterest);
    IONotificationPortDestroy(observation_->clamshellPort);
    observation_->clamshellInterest = IO_OBJECT_NULL;
    observation_->clamshellPort = nullptr;
  }
  if (observation_->powerSource) {
    const CFRunLoopSourceRef source = observation_->powerSource.get();
    forEachPowerSourceMode([&](CFStringRef mode) { CFRunLoopRemoveSource(CFRunLoopGetMain(), source, mode); });
    observation_->powerSource = CFOwned<CFRunLoopSourceRef>();
  }
  observation_->handler.reset();
}

}  // namespace wakeloft
