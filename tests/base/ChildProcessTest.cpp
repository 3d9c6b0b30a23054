#include "base/ChildProcess.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string>

namespace wakeloft {
namespace {

using Kind = ChildProcessError::Kind;

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

TEST(ChildProcessTest, GivesTheExitStatusAndBothOutputsInOrder) {
  const auto refused = ChildProcess::run({"/bin/sh", "-c", "echo first; echo 'must be run as root' >&2; exit 3"}, 2);
  EXPECT_EQ(refused.exitStatus, 3);
  EXPECT_EQ(refused.output, "first\nmust be run as root\n");
  // cat would wait forever on an inherited terminal or pipe.
  EXPECT_EQ(ChildProcess::run({"/bin/cat"}, 2).output, "");
  EXPECT_EQ(ChildProcess::run({"/bin/sh", "-c", "head -c 100000 /dev/zero"}, 5).output.size(),
            ChildProcess::maximumOutput);
}

TEST(ChildProcessTest, AProgramThatCannotStartOrDiesOfASignalIsAnError) {
  const auto missing = runFailing({"/nonexistent/pmset", "-g"}, 1);
  EXPECT_EQ(missing.kind(), Kind::notStarted);
  EXPECT_TRUE(std::string(missing.what()).starts_with("/nonexistent/pmset could not be started: ")) << missing.what();
  const auto killed = runFailing({"/bin/sh", "-c", "kill -9 $$"}, 2);
  EXPECT_EQ(killed.kind(), Kind::signalled);
  EXPECT_STREQ(killed.what(), "/bin/sh was ended by signal 9");
  EXPECT_THROW(ChildProcess::run({}, 1), std::invalid_argument);
}

// Also when it closed its output but lives on.
TEST(ChildProcessTest, AHungChildIsKilledAndReapedAtTheDeadline) {
  const std::string pidFile = ::testing::TempDir() + "wakeloft-child-" + std::to_string(getpid());
  for (const std::string closing : {"", "exec >&- 2>&-; "}) {
    SCOPED_TRACE(closing);
    const auto error =
        runFailing({"/bin/sh", "-c", "echo $$ > " + pidFile + "; " + closing + "exec /bin/sleep 5"}, 0.3);
    EXPECT_EQ(error.kind(), Kind::timedOut);
    EXPECT_STREQ(error.what(), "/bin/sh did not finish within 0.3 seconds and was stopped");
    pid_t pid = 0;
    std::ifstream(pidFile) >> pid;
    // Reaped means gone: a zombie would still answer kill(pid, 0).
    EXPECT_TRUE(pid > 0 && ::kill(pid, 0) == -1 && errno == ESRCH) << pid;
  }
  std::filesystem::remove(pidFile);
}

}  // namespace
}  // namespace wakeloft
