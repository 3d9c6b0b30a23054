// WakeloftLidHelper on macOS: the launch daemon that owns the sleep setting
// while the app holds leases over XPC. The same lease logic as the Linux
// rig, with pmset as the setting, the I/O Registry as the lid and a mach
// service as the door.
//
// Log lines go to the unified log (subsystem com.wakeloft.app.lidhelper,
// category "lease"), and to stderr as well when that is a terminal, for a
// helper started by hand.

#import <Foundation/Foundation.h>
#include <dispatch/dispatch.h>
#include <os/log.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>

#include "CFPropertyListParser.h"
#include "clock/ClockChangeNotifier.h"
#include "CodeSigningIdentity.h"
#include "IOKitClamshell.h"
#import "LidLeaseListenerDelegate.h"
#import "NSStringText.h"
#include "PmsetSleepSetting.h"
#include "ProcessExecutable.h"
#include "VnodeFileWatcher.h"
#include "clock/BackgroundQueue.h"
#include "clock/MainRunLoop.h"
#include "clock/SystemDateProvider.h"
#include "clock/SystemUptimeProvider.h"
#include "clock/TimerDeadlineScheduler.h"
#include "helper/LidHelperDaemon.h"
#include "helper/LidHelperFileWatch.h"
#include "helper/LidHelperService.h"
#include "helper/LidHelperUpdateCheck.h"

using namespace wakeloft;

namespace {

os_log_t helperLog() {
  static const os_log_t log = os_log_create(std::string(LidHelperService::label).c_str(), "lease");
  return log;
}

// Any thread: the watchdog logs from a background queue.
void logLine(const std::string& line) {
  os_log(helperLog(), "%{public}s", line.c_str());
  static const bool toTerminal = ::isatty(STDERR_FILENO) != 0;
  if (toTerminal) {
    std::fprintf(stderr, "%s\n", line.c_str());
    std::fflush(stderr);
  }
}

NSString* _Nullable nsString(const std::optional<std::string>& text) {
  return text ? wakeloft::nsString(*text) : nil;
}

// The one way out once the helper has started: put the setting back, then
// end with `status` if that worked and 1 if not. Bounded like the rig's: the
// retries stop after the window, and a watchdog ends the process at the
// exit limit whatever happens.
void stopAndExit(LidHelperDaemon& daemon, int status) {
  static bool stopping = false;
  if (stopping) return;
  stopping = true;
  BackgroundQueue::runAfter(LidHelperService::exitTimeout, [] {
    logLine("helper stopping: the setting could not be put back in time; exiting anyway");
    _exit(1);
  });
  const auto start = std::chrono::steady_clock::now();
  const bool putBack = daemon.stop(
      [start] {
        return std::chrono::steady_clock::now() - start >= std::chrono::duration<double>(LidHelperService::stopRetryWindow);
      },
      [] { std::this_thread::sleep_for(std::chrono::duration<double>(LidHelperService::stopRetryPause)); });
  if (!putBack) logLine("helper stopping: the setting could not be put back");
  // Not a return from main: XPC threads may still call into the objects
  // that main owns, so they are never destroyed.
  std::exit(putBack ? status : 1);
}

// The signal's default action is ignored, so that it reaches the source on
// the main queue instead of ending the process at once.
dispatch_source_t stopOnSignal(int number, LidHelperDaemon& daemon) {
  ::signal(number, SIG_IGN);
  dispatch_source_t source =
      dispatch_source_create(DISPATCH_SOURCE_TYPE_SIGNAL, static_cast<uintptr_t>(number), 0, dispatch_get_main_queue());
  LidHelperDaemon* stopping = &daemon;
  dispatch_source_set_event_handler(source, ^{
    stopAndExit(*stopping, 0);
  });
  dispatch_resume(source);
  return source;
}

}  // namespace

int main(int argc, char** argv) {
  @autoreleasepool {
    auto dates = std::make_shared<SystemDateProvider>();
    auto uptime = std::make_shared<SystemUptimeProvider>();
    // Puts the setting back to 0 at once: a 1 left by a helper that died
    // must not outlive it.
    auto keeper = std::make_shared<LidSleepLeaseKeeper>(std::make_shared<PmsetSleepSetting>(), dates, uptime);
    auto service = std::make_shared<LidLeaseService>(keeper, logLine);
    auto lidCheck = std::make_shared<LidSleepCheck>(std::make_shared<IOKitClamshell>(), logLine);
    std::unique_ptr<LidHelperUpdateCheck> updateCheck;
    // A clock set forward ends a lease at once, not when its uptime end comes.
    std::shared_ptr<ClockChangeNotifier> clockChanges;
    try {
      clockChanges = std::make_shared<ClockChangeNotifier>();
    } catch (const std::runtime_error& error) {
      logLine(std::string("clock changes will show only when a lease's uptime ends: ") + error.what());
    }
    LidHelperDaemon daemon(
        keeper, service, lidCheck, std::make_shared<TimerDeadlineScheduler>(), dates, uptime,
        [&updateCheck] {
          if (updateCheck) updateCheck->settingSettled();
        },
        clockChanges);
    // From here on, SIGTERM from launchd and SIGINT by hand take the stop path.
    __attribute__((objc_precise_lifetime)) dispatch_source_t terminate = stopOnSignal(SIGTERM, daemon);
    __attribute__((objc_precise_lifetime)) dispatch_source_t interrupt = stopOnSignal(SIGINT, daemon);
    (void)terminate;
    (void)interrupt;

    // The listener: only the app and its command, signed by this helper's own
    // team, get in, and the command may only ask how things stand.
    const auto teamIdentifier = CodeSigningIdentity::currentTeamIdentifier();
    NSString* callerRequirement = nsString(LidHelperService::callerRequirement(teamIdentifier));
    NSString* appRequirement =
        nsString(LidHelperService::codeRequirement(LidHelperService::appIdentifier, teamIdentifier));
    __attribute__((objc_precise_lifetime)) LidLeaseListenerDelegate* delegate =
        [[LidLeaseListenerDelegate alloc] initWithCallerRequirement:callerRequirement
                                                     appRequirement:appRequirement
                                                           requests:daemon.requests()];
    __attribute__((objc_precise_lifetime)) NSXPCListener* listener =
        [[NSXPCListener alloc] initWithMachServiceName:nsString(LidHelperService::label)];
    listener.delegate = delegate;  // held weakly by the listener

    const auto codeDirectoryHash = CodeSigningIdentity::currentCodeDirectoryHash();
    const std::optional<std::string> launchedAs = argc > 0 && argv[0] ? std::optional<std::string>(argv[0]) : std::nullopt;
    logLine(LidHelperService::startLine(ProcessExecutable::path(), launchedAs, codeDirectoryHash,
                                        CFPropertyListParser()));
    if (!callerRequirement) logLine("no signing team could be read, so no client will be accepted");

    // Stepping aside for an update takes the same stop path, in a later turn
    // of the main loop, never inside the request or tick that found it due.
    std::unique_ptr<VnodeFileWatcher> fileWatcher;
    const auto helperPath = ProcessExecutable::launchedPath(::getpid());
    if (codeDirectoryHash) {
      if (auto watch = LidHelperFileWatch::forRunningHelper(helperPath, ProcessExecutable::runningFile(),
                                                            *codeDirectoryHash, teamIdentifier,
                                                            &CodeSigningIdentity::codeDirectoryHash)) {
        LidHelperDaemon* stepping = &daemon;
        updateCheck = std::make_unique<LidHelperUpdateCheck>(
            std::move(*watch), keeper, service, logLine,
            [stepping] { MainRunLoop::perform([stepping] { stopAndExit(*stepping, 0); }); });
        LidHelperUpdateCheck* check = updateCheck.get();
        fileWatcher = std::make_unique<VnodeFileWatcher>(*helperPath, [check] { check->fileChanged(); });
      }
    }
    if (!fileWatcher) logLine("the helper cannot identify its own file, so it will not step aside for an update");

    [listener resume];
    // The main queue is served by the main run loop, so this never returns:
    // the process ends through stopAndExit.
    CFRunLoopRun();
  }
  return 0;
}
