#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

namespace wakeloft {

// The COMMAND of `wakeloft run`: found on the PATH, started with this
// process's standard streams and environment, and waited for. While it
// runs, SIGINT and SIGTERM that reach this process are passed on to it
// (unless this process was started ignoring them, which it then inherits).
// One at a time in a process.
namespace ChildCommand {

struct Outcome {
  // The command's exit status, 128 + the signal that ended it, or 127 when
  // it was not found and 126 when it could not be run.
  int status = 0;
  // Why it did not start, or could not be waited for; empty when it ran.
  std::string failure;
};

// `started` runs once it has started, with its pid.
Outcome run(const std::vector<std::string>& command, const std::function<void(pid_t)>& started);

}  // namespace ChildCommand
}  // namespace wakeloft
