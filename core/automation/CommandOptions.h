#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "automation/AutomationError.h"
#include "session/AwakeDuration.h"

namespace wakeloft {

// The command line of `wakeloft`, the app's command:
//   wakeloft [status] | start [DURATION] | stop | deepwake on|off
//          | run [--for DURATION] [--deepwake] [--] COMMAND [ARGUMENT...]
//          | wait PID [--for DURATION] [--deepwake]
//          | doctor [--json] [--socket PATH] [--rig-file PATH] | --help | --version
struct CommandOptions {
  enum class Subcommand { status, start, stop, deepwake, run, wait, doctor, help, version };

  Subcommand subcommand = Subcommand::status;
  // start's DURATION, or --for.
  std::optional<AwakeDuration> duration;
  // deepwake's on or off, or --deepwake.
  bool deepwake = false;
  // wait's PID.
  pid_t pid = 0;
  // run's COMMAND and its arguments.
  std::vector<std::string> command;
  // doctor's --json.
  bool json = false;
  // doctor's --socket and --rig-file: where the lease rig is, on Linux.
  std::optional<std::string> rigSocketPath;
  std::optional<std::string> rigFilePath;

  static CommandOptions of(Subcommand subcommand) {
    CommandOptions options;
    options.subcommand = subcommand;
    return options;
  }

  static const char* const usage;
  static const char* const help;

  // `arguments` excludes the program name.
  static std::variant<CommandOptions, AutomationError> parse(const std::vector<std::string>& arguments);

  friend bool operator==(const CommandOptions&, const CommandOptions&) = default;
};

}  // namespace wakeloft
