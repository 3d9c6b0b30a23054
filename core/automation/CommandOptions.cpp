#include "automation/CommandOptions.h"

#include <charconv>
#include <limits>
#include <map>

#include "automation/AutomationDuration.h"

namespace wakeloft {

const char* const CommandOptions::usage =
    "usage: wakeloft [status]\n"
    "       wakeloft start [DURATION]\n"
    "       wakeloft stop\n"
    "       wakeloft deepwake on|off\n"
    "       wakeloft run [--for DURATION] [--deepwake] [--] COMMAND [ARGUMENT...]\n"
    "       wakeloft wait PID [--for DURATION] [--deepwake]\n"
    "       wakeloft doctor [--json] [--socket PATH] [--rig-file PATH]\n"
    "       wakeloft --help | --version\n";

const char* const CommandOptions::help =
    "Keeps this Mac awake through the Wakeloft app, which it opens in the background when needed.\n"
    "\n"
    "  status    whether Wakeloft runs, whether the Mac is kept awake and until when, Deepwake\n"
    "  start     keeps the Mac awake, for DURATION when one is given\n"
    "  stop      ends the session and Deepwake\n"
    "  deepwake  turns Deepwake on or off, as the panel's switch does\n"
    "  run       runs COMMAND with this terminal, keeps the Mac awake until it ends and exits\n"
    "            with its status; Ctrl-C, Ctrl-\\, Ctrl-Z, hang-ups and the signals INT, TERM,\n"
    "            HUP and QUIT sent to wakeloft reach COMMAND once\n"
    "  wait      keeps the Mac awake until process PID ends, and waits for that\n"
    "  doctor    why the Mac does or does not sleep: Wakeloft, its helper, the sleep setting,\n"
    "            who keeps the Mac awake and the machine; exits 1 when something is wrong\n"
    "\n"
    "  start, stop and deepwake wait up to 2 seconds for the app's answer (15 when it had to\n"
    "  open). run and wait go on when the app refuses or lets go, and say so.\n"
    "\n"
    "  --for DURATION  also ends the session after DURATION, whichever comes first\n"
    "  --deepwake      with Deepwake, so the Mac stays awake with the lid closed\n"
    "  --json          doctor's report as one JSON object\n"
    "  --socket PATH, --rig-file PATH\n"
    "                  on Linux, the lease rig the doctor looks at\n"
    "\n"
    "DURATION is like 90m, 1h30m, 45s or a number of seconds, up to 8h.\n"
    "\n"
    "Exit status: 0 done (or delivered, when the app did not answer in time); 1 no process\n"
    "PID; 64 a usage error; 69 the app could not be reached; 77 the app refused. run exits\n"
    "with COMMAND's status, 128 + the signal that ended it, 126 when it cannot be run and\n"
    "127 when it is not found.\n";

namespace {

using Subcommand = CommandOptions::Subcommand;
using Result = std::variant<CommandOptions, AutomationError>;

AutomationError error(std::string reason) { return {std::move(reason)}; }

bool readDuration(const std::string& text, CommandOptions& options, std::optional<AutomationError>& failure) {
  auto parsed = AutomationDuration::parse(text);
  if (auto* problem = std::get_if<AutomationError>(&parsed)) {
    failure = std::move(*problem);
    return false;
  }
  options.duration = std::get<AwakeDuration>(parsed);
  return true;
}

// run's and wait's options, up to COMMAND or among wait's PID.
Result parseHolding(Subcommand subcommand, const std::vector<std::string>& arguments) {
  auto options = CommandOptions::of(subcommand);
  const std::string name = subcommand == Subcommand::run ? "run" : "wait";
  std::optional<std::string> pid;
  std::optional<AutomationError> failure;
  bool sawFor = false;
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (argument == "--deepwake") {
      if (options.deepwake) return error("--deepwake is given twice");
      options.deepwake = true;
    } else if (argument == "--for" || argument.starts_with("--for=")) {
      if (sawFor) return error("--for is given twice");
      sawFor = true;
      if (argument == "--for" && i + 1 == arguments.size()) return error("--for needs a DURATION");
      if (!readDuration(argument == "--for" ? arguments[++i] : argument.substr(6), options, failure)) return *failure;
    } else if (subcommand == Subcommand::run && (argument == "--" || !argument.starts_with("-"))) {
      options.command.assign(arguments.begin() + static_cast<std::ptrdiff_t>(i + (argument == "--" ? 1 : 0)),
                             arguments.end());
      break;
    } else if (subcommand == Subcommand::wait && !argument.starts_with("-") && !pid) {
      pid = argument;
    } else {
      return error(argument.starts_with("-") ? "unknown option \"" + argument + "\" for " + name
                                             : "wait takes one PID, not also \"" + argument + "\"");
    }
  }
  if (subcommand == Subcommand::run) {
    if (options.command.empty()) return error("run needs a COMMAND to run");
    return options;
  }
  if (!pid) return error("wait needs the PID of a process");
  long long number = 0;
  const auto [end, problem] = std::from_chars(pid->data(), pid->data() + pid->size(), number);
  if (problem != std::errc() || end != pid->data() + pid->size() || number < 0 ||
      number > std::numeric_limits<pid_t>::max()) {
    return error("PID must be a process number, not \"" + *pid + "\"");
  }
  options.pid = static_cast<pid_t>(number);
  return options;
}

Result parseDoctor(const std::vector<std::string>& arguments) {
  auto options = CommandOptions::of(Subcommand::doctor);
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (argument == "--json") {
      if (options.json) return error("--json is given twice");
      options.json = true;
      continue;
    }
    auto* path = argument == "--socket" ? &options.rigSocketPath : argument == "--rig-file" ? &options.rigFilePath : nullptr;
    if (!path) return error("unknown argument \"" + argument + "\" for doctor");
    if (*path) return error(argument + " is given twice");
    if (i + 1 == arguments.size() || arguments[i + 1].empty()) return error(argument + " needs a PATH");
    *path = arguments[++i];
  }
  return options;
}

}  // namespace

Result CommandOptions::parse(const std::vector<std::string>& arguments) {
  if (arguments.empty()) return CommandOptions{};
  const std::string& first = arguments.front();
  const auto rest = arguments.size() - 1;
  const auto alone = [&](Subcommand subcommand) -> Result {
    if (rest != 0) return error(first + " takes nothing after it, not \"" + arguments[1] + "\"");
    return CommandOptions::of(subcommand);
  };
  if (first == "--help" || first == "-h") return alone(Subcommand::help);
  if (first == "--version") return alone(Subcommand::version);
  if (first == "status") return alone(Subcommand::status);
  if (first == "stop") return alone(Subcommand::stop);
  if (first == "start") {
    auto options = CommandOptions::of(Subcommand::start);
    std::optional<AutomationError> failure;
    if (rest > 1) return error("start takes one DURATION at most");
    if (rest == 1 && !readDuration(arguments[1], options, failure)) return *failure;
    return options;
  }
  if (first == "deepwake") {
    if (rest != 1 || (arguments[1] != "on" && arguments[1] != "off")) return error("deepwake needs on or off");
    auto options = CommandOptions::of(Subcommand::deepwake);
    options.deepwake = arguments[1] == "on";
    return options;
  }
  if (first == "run") return parseHolding(Subcommand::run, arguments);
  if (first == "wait") return parseHolding(Subcommand::wait, arguments);
  if (first == "doctor") return parseDoctor(arguments);
  return error((first.starts_with("-") ? "unknown option \"" : "unknown command \"") + first + "\"");
}

}  // namespace wakeloft
