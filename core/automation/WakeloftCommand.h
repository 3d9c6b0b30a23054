#pragma once

#include <sys/types.h>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "automation/AppConnection.h"
#include "base/Date.h"
#include "base/ProcessTable.h"

namespace wakeloft {

// The command `wakeloft`: reads its command line, asks the app through
// wakeloft:// addresses it has checked with the app's own parser, prints
// the status from the app's stores, and runs or waits for the process a
// session is bound to. Exit statuses: 0 done, 64 a usage error (with the
// usage), 69 the app could not be reached, 1 no such process to wait for;
// run exits with its COMMAND's status.
namespace WakeloftCommand {

inline constexpr int usageError = 64;
inline constexpr int unavailable = 69;
inline constexpr int noSuchProcess = 1;

// The system under the command.
struct System {
  AppConnection& app;
  const ProcessTable& processes;
  // Returns once process `pid` has ended.
  std::function<void(pid_t)> waitUntilEnded;
  std::function<Date()> now;
  std::ostream& out;
  std::ostream& err;
  std::string version;
};

// `arguments` excludes the program name.
int run(const std::vector<std::string>& arguments, System& system);

}  // namespace WakeloftCommand
}  // namespace wakeloft
