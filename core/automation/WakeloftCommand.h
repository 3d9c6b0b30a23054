#pragma once

#include <sys/types.h>

#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "automation/AppConnection.h"
#include "automation/AutomationOutcomeListener.h"
#include "base/Date.h"
#include "base/ProcessExitWatcher.h"
#include "base/ProcessTable.h"
#include "doctor/DoctorFacts.h"
#include "automation/CommandOptions.h"

namespace wakeloft {

// The command `wakeloft`: reads its command line, asks the app through
// wakeloft:// addresses it has checked with the app's own parser, waits for
// the app's answer to each, prints the status from the app's stores, and
// runs or waits for the process a session is bound to. Exit statuses: 0 done,
// 64 a usage error (with the usage), 69 the app could not be reached, 77 the
// app refused, 1 no such process to wait for; run exits with its COMMAND's
// status, doctor with 1 when something is wrong.
namespace WakeloftCommand {

inline constexpr int usageError = 64;
inline constexpr int unavailable = 69;
inline constexpr int refused = 77;
inline constexpr int noSuchProcess = 1;

// How long the app's answer is waited for.
inline constexpr double answerTimeout = 2;
// When the address had to launch the app first.
inline constexpr double coldAnswerTimeout = 15;

// The system under the command.
struct System {
  AppConnection& app;
  // Started before each address is sent.
  AutomationOutcomeListener& outcomes;
  const ProcessTable& processes;
  ProcessExitWatcher& exits;
  // Runs the main loop until `done` answers true, or `seconds` have passed
  // when given; returns `done()`.
  std::function<bool(const std::function<bool()>& done, std::optional<double> seconds)> loopUntil;
  std::function<Date()> now;
  std::ostream& out;
  std::ostream& err;
  std::string version;
  // What the doctor reads of this system beyond the app's defaults. Throws
  // std::invalid_argument for options this system has no use for.
  std::function<DoctorFacts(const CommandOptions& options)> doctorFacts = {};
};

// `arguments` excludes the program name.
int run(const std::vector<std::string>& arguments, System& system);

}  // namespace WakeloftCommand
}  // namespace wakeloft
