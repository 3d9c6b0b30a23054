// The wakeloft command's line: any arguments give options or a reason, the
// options keep to their subcommand, and given back as arguments they parse
// the same.

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "FuzzCheck.h"
#include "automation/AutomationDuration.h"
#include "automation/CommandOptions.h"

using namespace wakeloft;
using fuzz::require;
using Subcommand = CommandOptions::Subcommand;

namespace {

std::vector<std::string> arguments(const CommandOptions& options) {
  const auto duration = options.duration ? AutomationDuration::write(*options.duration) : std::string();
  switch (options.subcommand) {
    case Subcommand::status: return {"status"};
    case Subcommand::start: return options.duration ? std::vector<std::string>{"start", duration} : std::vector<std::string>{"start"};
    case Subcommand::stop: return {"stop"};
    case Subcommand::deepwake: return {"deepwake", options.deepwake ? "on" : "off"};
    case Subcommand::help: return {"--help"};
    case Subcommand::version: return {"--version"};
    case Subcommand::doctor: {
      std::vector<std::string> list = {"doctor"};
      if (options.json) list.push_back("--json");
      if (options.rigSocketPath) list.insert(list.end(), {"--socket", *options.rigSocketPath});
      if (options.rigFilePath) list.insert(list.end(), {"--rig-file", *options.rigFilePath});
      return list;
    }
    case Subcommand::run:
    case Subcommand::wait: break;
  }
  std::vector<std::string> list = {options.subcommand == Subcommand::run ? "run" : "wait"};
  if (options.subcommand == Subcommand::wait) list.push_back(std::to_string(options.pid));
  if (options.duration) list.insert(list.end(), {"--for", duration});
  if (options.deepwake) list.push_back("--deepwake");
  if (options.subcommand == Subcommand::run) {
    list.push_back("--");
    list.insert(list.end(), options.command.begin(), options.command.end());
  }
  return list;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  std::vector<std::string> given;
  while (input.remaining_bytes() > 0 && given.size() < 10) {
    // The words the command knows come often enough to meet each other.
    if (input.ConsumeBool()) {
      given.push_back(input.PickValueInArray({"status", "start", "stop", "deepwake", "run", "wait", "on", "off",
                                              "--for", "--deepwake", "--", "--help", "--version", "90m", "4242", "doctor",
                                              "--json", "--socket", "--rig-file"}));
    } else {
      given.push_back(input.ConsumeRandomLengthString(16));
    }
  }

  const auto parsed = CommandOptions::parse(given);
  if (const auto* error = std::get_if<AutomationError>(&parsed)) {
    require(!error->reason.empty(), "a usage error says why");
    return 0;
  }
  const auto& options = std::get<CommandOptions>(parsed);
  require(options.subcommand != Subcommand::run || !options.command.empty(), "run has a command");
  require(options.pid >= 0, "a pid read is not negative");
  const auto again = CommandOptions::parse(arguments(options));
  require(std::holds_alternative<CommandOptions>(again) && std::get<CommandOptions>(again) == options,
          "options given back as arguments parse the same");
  return 0;
}
