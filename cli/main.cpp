// wakeloft: the Wakeloft app's command. Everything it decides is
// WakeloftCommand's; this picks the system's parts and runs a main loop only
// while it waits for a process that is not its own child.

#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "automation/WakeloftCommand.h"
#include "clock/SystemDateProvider.h"

#if defined(__APPLE__)
#include <CoreFoundation/CoreFoundation.h>

#include "DispatchProcessExitWatcher.h"
#include "LibprocProcessTable.h"
#include "WorkspaceAppConnection.h"
#else
#include <glib.h>

#include "PidfdProcessExitWatcher.h"
#include "ProcfsProcessTable.h"
#include "automation/UnavailableAppConnection.h"
#endif

using namespace wakeloft;

namespace {

#if defined(__APPLE__)
using SystemProcessTable = LibprocProcessTable;
using SystemProcessExitWatcher = DispatchProcessExitWatcher;

// A cold launch of the app is part of handing an address over.
constexpr double deliveryTimeout = 15;

std::unique_ptr<AppConnection> appConnection() {
  return std::make_unique<WorkspaceAppConnection>("com.wakeloft.app", deliveryTimeout);
}

// The exit event comes on the main queue, which the main run loop serves.
void waitUntilEnded(pid_t pid) {
  SystemProcessExitWatcher watcher;
  bool ended = false;
  watcher.watch(pid, [&ended] {
    ended = true;
    CFRunLoopStop(CFRunLoopGetMain());
  });
  while (!ended) CFRunLoopRun();
}
#else
using SystemProcessTable = ProcfsProcessTable;
using SystemProcessExitWatcher = PidfdProcessExitWatcher;

std::unique_ptr<AppConnection> appConnection() { return std::make_unique<UnavailableAppConnection>(); }

void waitUntilEnded(pid_t pid) {
  SystemProcessExitWatcher watcher;
  GMainLoop* loop = g_main_loop_new(nullptr, FALSE);
  watcher.watch(pid, [loop] { g_main_loop_quit(loop); });
  g_main_loop_run(loop);
  g_main_loop_unref(loop);
}
#endif

}  // namespace

int main(int argc, char** argv) {
  const auto app = appConnection();
  const SystemProcessTable processes;
  const SystemDateProvider dates;
  WakeloftCommand::System system{*app,      processes,  waitUntilEnded, [&dates] { return dates.now(); },
                                 std::cout, std::cerr, WAKELOFT_VERSION};
  const int status = WakeloftCommand::run(std::vector<std::string>(argv + 1, argv + argc), system);
  std::cout.flush();
  return status;
}
