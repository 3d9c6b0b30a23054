// wakeloft: the Wakeloft app's command. Everything it decides is
// WakeloftCommand's; this picks the system's parts and runs the main loop
// while it waits for an answer or a process.

#include <cmath>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "automation/WakeloftCommand.h"
#include "clock/SystemDateProvider.h"

#if defined(__APPLE__)
#include <CoreFoundation/CoreFoundation.h>

#include "DispatchProcessExitWatcher.h"
#include "DistributedAutomationOutcomeListener.h"
#include "LibprocProcessTable.h"
#include "SystemDoctorFacts.h"
#include "WorkspaceAppConnection.h"
#else
#include <glib.h>

#include "PidfdProcessExitWatcher.h"
#include "ProcfsProcessTable.h"
#include "RigDoctorFacts.h"
#include "helper/RigLeaseFile.h"
#include "automation/InProcessAutomationOutcomeChannel.h"
#include "automation/UnavailableAppConnection.h"
#endif

using namespace wakeloft;

namespace {

#if defined(__APPLE__)
using SystemProcessTable = LibprocProcessTable;
using SystemProcessExitWatcher = DispatchProcessExitWatcher;
using SystemOutcomeListener = DistributedAutomationOutcomeListener;

// A cold launch of the app is part of handing an address over.
constexpr double deliveryTimeout = 15;

std::unique_ptr<WorkspaceAppConnection> appConnection() {
  return std::make_unique<WorkspaceAppConnection>("com.wakeloft.app", deliveryTimeout);
}

std::function<DoctorFacts(const CommandOptions&)> doctorFacts(const WorkspaceAppConnection& app) {
  return [&app](const CommandOptions& options) {
    if (options.rigSocketPath || options.rigFilePath) {
      throw std::invalid_argument("--socket and --rig-file are for the lease rig on Linux");
    }
    return SystemDoctorFacts::read(app.appPath(), WakeloftCommand::answerTimeout);
  };
}

// Events come on the main queue and the main run loop, which this serves.
bool loopUntil(const std::function<bool()>& done, std::optional<double> seconds) {
  const CFAbsoluteTime deadline = CFAbsoluteTimeGetCurrent() + seconds.value_or(0);
  while (!done()) {
    const double left = seconds ? deadline - CFAbsoluteTimeGetCurrent() : 1e10;
    if (left <= 0) break;
    CFRunLoopRunInMode(kCFRunLoopDefaultMode, left, true);
  }
  return done();
}
#else
using SystemProcessTable = ProcfsProcessTable;
using SystemProcessExitWatcher = PidfdProcessExitWatcher;
// Nothing publishes on Linux; the command still listens as it does on macOS.
using SystemOutcomeListener = InProcessAutomationOutcomeChannel;

std::unique_ptr<AppConnection> appConnection() { return std::make_unique<UnavailableAppConnection>(); }

// The lease rig stands in for the Mac: its file for the setting, its socket
// for the helper.
std::function<DoctorFacts(const CommandOptions&)> doctorFacts(const AppConnection&) {
  return [](const CommandOptions& options) {
    return RigDoctorFacts::read(options.rigSocketPath.value_or(RigDoctorFacts::defaultSocketPath),
                                options.rigFilePath.value_or(std::string(RigLeaseFile::defaultPath)),
                                WakeloftCommand::answerTimeout);
  };
}

bool loopUntil(const std::function<bool()>& done, std::optional<double> seconds) {
  bool timedOut = false;
  guint limit = 0;
  if (seconds) {
    limit = g_timeout_add(static_cast<guint>(std::ceil(*seconds * 1000)), [](gpointer flag) {
      *static_cast<bool*>(flag) = true;
      return G_SOURCE_REMOVE;
    }, &timedOut);
  }
  while (!done() && !timedOut) g_main_context_iteration(nullptr, TRUE);
  if (limit != 0 && !timedOut) g_source_remove(limit);
  return done();
}
#endif

}  // namespace

int main(int argc, char** argv) {
  const auto app = appConnection();
  SystemOutcomeListener outcomes;
  const SystemProcessTable processes;
  SystemProcessExitWatcher exits;
  const SystemDateProvider dates;
  WakeloftCommand::System system{*app,       outcomes,  processes,      exits,           loopUntil, [&dates] { return dates.now(); },
                                 std::cout, std::cerr, WAKELOFT_VERSION, doctorFacts(*app)};
  const int status = WakeloftCommand::run(std::vector<std::string>(argv + 1, argv + argc), system);
  std::cout.flush();
  return status;
}
