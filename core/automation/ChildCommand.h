#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

namespace wakeloft {

// The COMMAND of `wakeloft run`: found on the PATH as execvp finds it (a
// file without #! runs under /bin/sh), started with this process's standard
// streams and environment, and waited for. One at a time in a process.
//
// Signals reach it exactly once. It runs in a process group of its own, so
// nothing meant for this process's group reaches it directly; SIGINT,
// SIGTERM, SIGHUP and SIGQUIT that reach this process are passed on to its
// group (unless this process was started ignoring them, which it then
// inherits). When this process is its terminal's foreground group, the
// command's group becomes the foreground instead, so the terminal's own
// Ctrl-C, Ctrl-\ and Ctrl-Z go to the command alone; its stops are followed
// as a shell would: this process gives the terminal back and stops too, and
// once continued hands the terminal over again and continues the command.
// The terminal comes back to this process's group at the end.
namespace ChildCommand {

struct Outcome {
  // The command's exit status, 128 + the signal that ended it, or 127 when
  // it was not found and 126 when it could not be run.
  int status = 0;
  // Why it did not start, or could not be waited for; empty when it ran.
  std::string failure;
};

// Runs the caller's main loop until the given test answers true.
using LoopUntil = std::function<void(const std::function<bool()>& done)>;

// `started` runs on the calling thread once the command has started, with
// its pid. The command's end is followed off the main thread and reported
// through MainRunLoop, so the caller's loop serves other events meanwhile.
Outcome run(const std::vector<std::string>& command, const std::function<void(pid_t)>& started,
            const LoopUntil& loopUntil);

}  // namespace ChildCommand
}  // namespace wakeloft
