#pragma once

// The platform's own process table and exit watcher, and child processes,
// for tests with real processes.
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <string>
#include <vector>

#if defined(__APPLE__)
#include "DispatchProcessExitWatcher.h"
#include "LibprocProcessTable.h"
#else
#include "PidfdProcessExitWatcher.h"
#include "ProcfsProcessTable.h"
#endif

extern char** environ;

namespace wakeloft::testing {

#if defined(__APPLE__)
using SystemProcessTable = LibprocProcessTable;
using SystemProcessExitWatcher = DispatchProcessExitWatcher;
#else
using SystemProcessTable = ProcfsProcessTable;
using SystemProcessExitWatcher = PidfdProcessExitWatcher;
#endif

// A process started for a test (pid 0 when it could not be), killed and
// reaped when the test is done.
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
  void reap() {
    if (pid > 0) waitpid(pid, nullptr, 0);
    pid = 0;
  }
};

}  // namespace wakeloft::testing
