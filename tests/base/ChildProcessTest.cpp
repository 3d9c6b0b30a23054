#include "base/ChildProcess.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>

namespace wakeloft {
namespace {

using Kind = ChildProcessError::Kind;
using std::chrono::steady_clock;

double secondsSince(steady_clock::time_point start) {
  return std::chrono::duration<double>(steady_clock::now() - start).count();
}

// Runs and expects a ChildProcessError; returns it for a closer look.
ChildProcessError runFailing(const std::vector<std::string>& arguments, double timeout) {
  try {
    ChildProcess::run(arguments, timeout);
  } catch (const ChildProcessError& error) {
    return error;
  }
  ADD_FAILURE() << arguments.front() << " was expected to fail";
  return ChildProcessError(Kind::lost, "");
}

// A file the child writes its process id into, so the test can look for it
// after the run.
class PidFile {
 public:
  PidFile() {
    std::string pattern = (std::filesystem::temp_directory_path() / "wakeloft-child-XXXXXX").string();
    const int fd = ::mkstemp(pattern.data());
    if (fd >= 0) ::close(fd);
    path_ = pattern;
  }
  ~PidFile() { std::filesystem::remove(path_); }

  const std::string& path() const { return path_; }
  pid_t pid() const {
    std::ifstream in(path_);
    pid_t pid = 0;
    in >> pid;
    return pid;
  }

 private:
  std::string path_;
};

// Reaped means gone: a zombie would still answer kill(pid, 0).
bool isGone(pid_t pid) { return pid > 0 && ::kill(pid, 0) == -1 && errno == ESRCH; }

TEST(ChildProcessTest, GivesTheExitStatusAndBothOutputsInOrderOrAnErrorWhenItCannotStartOrDiesOfASignal) {
  const auto done = ChildProcess::run({"/bin/echo", "SleepDisabled", "1"}, 2);
  EXPECT_EQ(done.exitStatus, 0);
  EXPECT_EQ(done.output, "SleepDisabled 1\n");

  const auto refused = ChildProcess::run({"/bin/sh", "-c", "echo first; echo 'must be run as root' >&2; exit 3"}, 2);
  EXPECT_EQ(refused.exitStatus, 3);
  EXPECT_EQ(refused.output, "first\nmust be run as root\n");

  // cat would wait forever on an inherited terminal or pipe.
  EXPECT_EQ(ChildProcess::run({"/bin/cat"}, 2).output, "");

  const auto flood = ChildProcess::run({"/bin/sh", "-c", "head -c 100000 /dev/zero"}, 5);
  EXPECT_EQ(flood.exitStatus, 0);
  EXPECT_EQ(flood.output.size(), ChildProcess::maximumOutput);

  const auto missing = runFailing({"/nonexistent/pmset", "-g"}, 1);
  EXPECT_EQ(missing.kind(), Kind::notStarted);
  EXPECT_EQ(std::string(missing.what()).rfind("/nonexistent/pmset could not be started: ", 0), 0u) << missing.what();

  const auto killed = runFailing({"/bin/sh", "-c", "kill -9 $$"}, 2);
  EXPECT_EQ(killed.kind(), Kind::signalled);
  EXPECT_STREQ(killed.what(), "/bin/sh was ended by signal 9");

  EXPECT_THROW(ChildProcess::run({}, 1), std::invalid_argument);

  // The helper ignores SIGTERM to receive it through a dispatch source.
  struct sigaction ignore {};
  ignore.sa_handler = SIG_IGN;
  struct sigaction previous {};
  ::sigaction(SIGTERM, &ignore, &previous);
  sigset_t blocked, previousMask;
  sigemptyset(&blocked);
  sigaddset(&blocked, SIGINT);
  ::pthread_sigmask(SIG_BLOCK, &blocked, &previousMask);

  const auto terminated = runFailing({"/bin/sh", "-c", "kill -TERM $$; sleep 2"}, 3);
  const auto interrupted = runFailing({"/bin/sh", "-c", "kill -INT $$; sleep 2"}, 3);

  ::pthread_sigmask(SIG_SETMASK, &previousMask, nullptr);
  ::sigaction(SIGTERM, &previous, nullptr);
  EXPECT_STREQ(terminated.what(), "/bin/sh was ended by signal 15");
  EXPECT_STREQ(interrupted.what(), "/bin/sh was ended by signal 2");
}

// Also when it closed its output but lives on.
TEST(ChildProcessTest, AHungChildIsKilledAndReapedAtTheDeadlineNamedInWords) {
  for (const std::string closing : {"", "exec >&- 2>&-; "}) {
    SCOPED_TRACE(closing);
    PidFile pidFile;
    const auto start = steady_clock::now();
    const auto error =
        runFailing({"/bin/sh", "-c", "echo $$ > " + pidFile.path() + "; " + closing + "exec /bin/sleep 5"}, 0.3);
    const double took = secondsSince(start);

    EXPECT_EQ(error.kind(), Kind::timedOut);
    EXPECT_STREQ(error.what(), "/bin/sh did not finish within 0.3 seconds and was stopped");
    EXPECT_GE(took, 0.29);
    EXPECT_LT(took, 2.0);
    EXPECT_TRUE(isGone(pidFile.pid()));
  }
  EXPECT_EQ(ChildProcess::describeSeconds(1), "1 second");
  EXPECT_EQ(ChildProcess::describeSeconds(0.25), "0.25 seconds");
}

}  // namespace
}  // namespace wakeloft
