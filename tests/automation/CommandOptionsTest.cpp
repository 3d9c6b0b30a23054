// The command line of `wakeloft`.

#include <gtest/gtest.h>

#include "automation/CommandOptions.h"

namespace wakeloft {
namespace {

using Subcommand = CommandOptions::Subcommand;
using Arguments = std::vector<std::string>;

CommandOptions expected(Subcommand subcommand, std::optional<double> seconds = std::nullopt, bool deepwake = false,
                        pid_t pid = 0, Arguments command = {}) {
  auto options = CommandOptions::of(subcommand);
  if (seconds) options.duration = AwakeDuration{*seconds};
  options.deepwake = deepwake;
  options.pid = pid;
  options.command = std::move(command);
  return options;
}

TEST(CommandOptionsTest, ReadsEverySubcommand) {
  std::vector<std::pair<Arguments, CommandOptions>> cases = {
      {{}, expected(Subcommand::status)},
      {{"start", "90m"}, expected(Subcommand::start, 5400)},
      {{"stop"}, expected(Subcommand::stop)},
      {{"deepwake", "on"}, expected(Subcommand::deepwake, std::nullopt, true)},
      {{"run", "--for", "1h", "--deepwake", "--", "make", "-j8"},
       expected(Subcommand::run, 3600, true, 0, {"make", "-j8"})},
      // Options end at COMMAND: what follows is its own.
      {{"run", "--for=45s", "ls", "--deepwake"}, expected(Subcommand::run, 45, false, 0, {"ls", "--deepwake"})},
      {{"run", "--", "--odd-name"}, expected(Subcommand::run, std::nullopt, false, 0, {"--odd-name"})},
      {{"wait", "--deepwake", "4242", "--for", "2h"}, expected(Subcommand::wait, 7200, true, 4242)},
      {{"--help"}, expected(Subcommand::help)},
  };
  auto doctor = CommandOptions::of(Subcommand::doctor);
  doctor.json = true;
  doctor.rigFilePath = "/tmp/r";
  cases.push_back({{"doctor", "--rig-file", "/tmp/r", "--json"}, doctor});
  for (const auto& [arguments, options] : cases) {
    const auto parsed = CommandOptions::parse(arguments);
    ASSERT_TRUE(std::holds_alternative<CommandOptions>(parsed))
        << ::testing::PrintToString(arguments) << ": " << std::get<AutomationError>(parsed).reason;
    EXPECT_EQ(std::get<CommandOptions>(parsed), options) << ::testing::PrintToString(arguments);
  }
}

TEST(CommandOptionsTest, SaysWhatIsWrongWithAUsage) {
  const std::vector<std::pair<Arguments, std::string>> refusals = {
      {{"sleep"}, "unknown command \"sleep\""},
      {{"--verbose"}, "unknown option \"--verbose\""},
      {{"status", "now"}, "status takes nothing after it"},
      {{"start", "1h", "2h"}, "one DURATION at most"},
      {{"start", "9h"}, "longer than 8h"},
      {{"deepwake", "maybe"}, "on or off"},
      {{"run"}, "run needs a COMMAND"},
      {{"run", "--for"}, "--for needs a DURATION"},
      {{"run", "--for", "1h", "--for=2h", "make"}, "--for is given twice"},
      {{"run", "--fast", "make"}, "unknown option \"--fast\" for run"},
      {{"wait"}, "wait needs the PID"},
      {{"wait", "12", "13"}, "one PID, not also \"13\""},
      {{"wait", "abc"}, "process number, not \"abc\""},
      {{"wait", "12", "--deepwake", "--deepwake"}, "--deepwake is given twice"},
      {{"doctor", "--socket"}, "--socket needs a PATH"},
      {{"doctor", "--json", "--json"}, "--json is given twice"},
      {{"doctor", "now"}, "unknown argument \"now\" for doctor"},
  };
  for (const auto& [arguments, reason] : refusals) {
    const auto parsed = CommandOptions::parse(arguments);
    ASSERT_TRUE(std::holds_alternative<AutomationError>(parsed)) << ::testing::PrintToString(arguments);
    EXPECT_NE(std::get<AutomationError>(parsed).reason.find(reason), std::string::npos)
        << std::get<AutomationError>(parsed).reason;
  }
}

}  // namespace
}  // namespace wakeloft
