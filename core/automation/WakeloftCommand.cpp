#include "automation/WakeloftCommand.h"

#include "automation/AutomationAddress.h"
#include "automation/ChildCommand.h"
#include "automation/CommandOptions.h"
#include "automation/CommandStatus.h"
#include "automation/PublishedDeepwake.h"
#include "session/UserDefaultsAwakeIntentStore.h"
#include "session/UserDefaultsProcessBindingStore.h"

namespace wakeloft::WakeloftCommand {

namespace {

using Subcommand = CommandOptions::Subcommand;

// The status's words are English, so are its durations.
constexpr const char* statusLocale = "en";

int usage(System& system, const std::string& reason) {
  system.err << "wakeloft: " << reason << "\n" << CommandOptions::usage;
  return usageError;
}

// Sends `request` once the app's parser has read it back as the same
// request; says why not otherwise.
std::optional<std::string> send(System& system, const AutomationRequest& request) {
  const std::string address = AutomationAddress::write(request);
  const auto parsed = AutomationAddress::parse(address);
  if (const auto* error = std::get_if<AutomationError>(&parsed)) return error->reason;
  if (std::get<AutomationRequest>(parsed) != request) return "the address " + address + " reads differently";
  try {
    system.app.open(address);
  } catch (const std::exception& error) {
    return std::string("the app could not be reached: ") + error.what();
  }
  return std::nullopt;
}

int status(System& system) {
  auto& defaults = system.app.appDefaults();
  const CommandStatus::Facts facts{system.app.isAppRunning(), UserDefaultsAwakeIntentStore(defaults).load(),
                                   UserDefaultsProcessBindingStore(defaults).load(),
                                   PublishedDeepwake::read(defaults), [&system](const ProcessIdentity& process) {
                                     const auto running = system.processes.find(process.pid);
                                     return running && running->identity == process;
                                   }};
  system.out << CommandStatus::render(facts, system.now(), statusLocale);
  return 0;
}

int ask(System& system, const AutomationRequest& request) {
  if (const auto failure = send(system, request)) {
    system.err << "wakeloft: " << *failure << "\n";
    return unavailable;
  }
  return 0;
}

int wait(System& system, const CommandOptions& options) {
  const auto request = AutomationRequest::hold(options.pid, options.duration, options.deepwake);
  // The grammar's own word on pids 0 and 1 before the table's.
  const auto checked = AutomationAddress::parse(AutomationAddress::write(request));
  if (const auto* error = std::get_if<AutomationError>(&checked)) return usage(system, error->reason);
  if (!system.processes.find(options.pid)) {
    system.err << "wakeloft: there is no process " << options.pid << "\n";
    return noSuchProcess;
  }
  if (const int status = ask(system, request); status != 0) return status;
  system.waitUntilEnded(options.pid);
  return 0;
}

int runCommand(System& system, const CommandOptions& options) {
  const auto outcome = ChildCommand::run(options.command, [&](pid_t pid) {
    // The work goes on whether or not the app can keep the Mac awake for it.
    if (const auto failure = send(system, AutomationRequest::hold(pid, options.duration, options.deepwake))) {
      system.err << "wakeloft: " << options.command.front() << " runs without keeping the Mac awake: " << *failure
                 << "\n";
    }
  });
  if (!outcome.failure.empty()) system.err << "wakeloft: " << outcome.failure << "\n";
  return outcome.status;
}

}  // namespace

int run(const std::vector<std::string>& arguments, System& system) {
  const auto parsed = CommandOptions::parse(arguments);
  if (const auto* error = std::get_if<AutomationError>(&parsed)) return usage(system, error->reason);
  const auto& options = std::get<CommandOptions>(parsed);
  switch (options.subcommand) {
    case Subcommand::help: system.out << CommandOptions::usage << "\n" << CommandOptions::help; return 0;
    case Subcommand::version: system.out << "wakeloft " << system.version << "\n"; return 0;
    case Subcommand::status: return status(system);
    case Subcommand::start: return ask(system, AutomationRequest::start(options.duration));
    case Subcommand::stop: return ask(system, AutomationRequest::stop());
    case Subcommand::deepwake: return ask(system, AutomationRequest::switchDeepwake(options.deepwake));
    case Subcommand::wait: return wait(system, options);
    case Subcommand::run: return runCommand(system, options);
  }
  return usageError;
}

}  // namespace wakeloft::WakeloftCommand
