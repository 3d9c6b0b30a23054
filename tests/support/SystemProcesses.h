#pragma once

// The platform's own process table and exit watcher, for tests with real
// processes.
#if defined(__APPLE__)
#include "DispatchProcessExitWatcher.h"
#include "LibprocProcessTable.h"
namespace wakeloft::testing {
using SystemProcessTable = LibprocProcessTable;
using SystemProcessExitWatcher = DispatchProcessExitWatcher;
}  // namespace wakeloft::testing
#else
#include "PidfdProcessExitWatcher.h"
#include "ProcfsProcessTable.h"
namespace wakeloft::testing {
using SystemProcessTable = ProcfsProcessTable;
using SystemProcessExitWatcher = PidfdProcessExitWatcher;
}  // namespace wakeloft::testing
#endif

#include <spawn.h>
#include <sys/wait.h>

#include <string>
#include <vector>

extern char** environ;

namespace wakeloft::testing {

// A process started for a test, killed and reaped when the test is done.
struct TestChild {
  pid_t pid = 0;

  explicit TestChild(std::vector<std::string> arguments) {
    std::vector<char*> argv;
    for (auto& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    if (posix_spawnp(&pid, argv[0], nullptr, nullptr, argv.data(), environ) != 0) pid = 0;
  }
  TestChild(const TestChild&) = delete;
  TestChild& operator=(const TestChild&) = delete;
  ~TestChild() {
    if (pid > 0) kill(pid, SIGKILL);
    reap();
  }
  // Waits for its end; its wait status.
  int reap() {
    int status = 0;
    if (pid > 0) waitpid(pid, &status, 0);
    pid = 0;
    return status;
  }
};

}  // namespace wakeloft::testing
