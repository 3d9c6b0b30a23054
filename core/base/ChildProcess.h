#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "base/ChildProcessError.h"

namespace wakeloft {

// Runs a short system tool to its end, or stops it when it takes too long.
// The caller's thread waits, but never past the time limit it gives.
namespace ChildProcess {

struct Result {
  // The status the program exited with.
  int exitStatus = 0;
  // Its output and error output together, as they came; cut after
  // `maximumOutput` bytes (the rest is read and dropped).
  std::string output;
};

inline constexpr std::size_t maximumOutput = 64 * 1024;

// Runs `arguments[0]`, an absolute path (no search), with the rest as its
// arguments, empty input and the default handling of every signal. Throws
// ChildProcessError when it cannot be started, when it has not finished
// after `timeoutSeconds` (it is then killed with SIGKILL and reaped), or
// when a signal ends it; std::invalid_argument when `arguments` is empty.
Result run(const std::vector<std::string>& arguments, double timeoutSeconds);

// "1 second", "0.25 seconds": how the error texts give a time limit.
std::string describeSeconds(double seconds);

}  // namespace ChildProcess
}  // namespace wakeloft
