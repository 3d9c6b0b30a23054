#include "helper/PmsetCommand.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace wakeloft {
namespace {

// Output as pmset prints it on a laptop, with the system-wide part as given.
std::string listing(const std::string& systemWide) {
  return "System-wide power settings:\n" + systemWide +
         "Currently in use:\n"
         " sleep                1 (sleep prevented by powerd)\n";
}

ChildProcess::Result exited(int status, std::string output) { return {status, std::move(output)}; }

std::string readFailure(const ChildProcess::Result& result) {
  try {
    PmsetCommand::sleepDisabled(result);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  ADD_FAILURE() << "the listing was read as a value";
  return {};
}

TEST(PmsetCommandTest, ReadsTheSystemWideSleepDisabledLineOnlyWithNoLineReadAsZero) {
  const std::pair<std::string, bool> listings[] = {
      {listing(" SleepDisabled\t\t1\n"), true},
      {listing(" SleepDisabled\t\t0\n"), false},
      {listing(" SleepDisabled\t\t1 (imposed by 'powerd')\n"), true},  // the note is the system's
      {" SleepDisabledAfter 1\n" + listing(" SleepDisabled 0\n"), false},  // another setting's 1
      {listing(""), false},  // a setting never changed is listed without a line
  };
  for (const auto& [output, disabled] : listings) {
    EXPECT_EQ(PmsetCommand::sleepDisabled(exited(0, output)), disabled) << output;
  }
}

TEST(PmsetCommandTest, AnUnreadableListingOrAFailingToolSaysWhatWasWrong) {
  EXPECT_EQ(readFailure(exited(0, listing(" SleepDisabled\t\tmaybe\n"))),
            "pmset -g gave no value of 0 or 1 for SleepDisabled: SleepDisabled\t\tmaybe");
  EXPECT_EQ(readFailure(exited(0, "\nUsage: pmset <options>\n")), "pmset -g listed no power settings: Usage: pmset <options>");
  EXPECT_EQ(readFailure(exited(1, listing(" SleepDisabled 0\n"))),
            "pmset -g failed with exit status 1: System-wide power settings:");
  try {
    PmsetCommand::checkWritten(exited(1, "  pmset must be run as root in order to modify settings  \n"));
    FAIL() << "a failed write passed";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "pmset failed with exit status 1: pmset must be run as root in order to modify settings");
  }
}

TEST(PmsetCommandTest, ATimedOutToolFailsTheReadAndTheWriteWithItsOwnError) {
  const PmsetCommand::Run hanging = [](const std::vector<std::string>&, double) -> ChildProcess::Result {
    throw ChildProcessError(ChildProcessError::Kind::timedOut, "stopped");
  };
  EXPECT_THROW(PmsetCommand::write(true, hanging), ChildProcessError);
  EXPECT_THROW(PmsetCommand::read(hanging), ChildProcessError);
}

TEST(PmsetCommandTest, WritesAndReadsWithTheirOwnArgumentsAndTimeLimits) {
  std::vector<std::pair<std::vector<std::string>, double>> calls;
  const PmsetCommand::Run recording = [&](const std::vector<std::string>& arguments, double timeout) {
    calls.emplace_back(arguments, timeout);
    return arguments[1] == "-g" ? exited(0, listing(" SleepDisabled 1\n")) : exited(0, "");
  };

  PmsetCommand::write(true, recording);
  PmsetCommand::write(false, recording);
  EXPECT_TRUE(PmsetCommand::read(recording));

  using Call = std::pair<std::vector<std::string>, double>;
  EXPECT_EQ(calls, (std::vector<Call>{{{"/usr/bin/pmset", "-a", "disablesleep", "1"}, 1.0},
                                      {{"/usr/bin/pmset", "-a", "disablesleep", "0"}, 1.0},
                                      {{"/usr/bin/pmset", "-g"}, 0.25}}));
}

}  // namespace
}  // namespace wakeloft
