#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

#include "helper/LidHelperFileWatch.h"

namespace wakeloft {

// Where a running process's code comes from, as the kernel and the dynamic
// loader tell it. Every failure gives absent.
namespace ProcessExecutable {

// The file this process's code was mapped from: the device and inode of the
// executable's first segment.
std::optional<LidHelperFileWatch::File> runningFile();
// The executable path in `process`'s argument area: how it was started,
// accepted only when absolute.
std::optional<std::string> launchedPath(pid_t process);
// This process's executable path as the dynamic loader has it.
std::optional<std::string> path();

}  // namespace ProcessExecutable
}  // namespace wakeloft
