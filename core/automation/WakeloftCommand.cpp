#include "automation/WakeloftCommand.h"

#include <random>

#include "automation/AutomationAddress.h"
#include "automation/ChildCommand.h"
#include "automation/CommandOptions.h"
#include "automation/CommandStatus.h"
#include "automation/PublishedAutomaticSession.h"
#include "automation/PublishedDeepwake.h"
#include "doctor/DoctorReport.h"
#include "doctor/StoredValueCheck.h"
#include "lid/PublishedLidHelper.h"
#include "lid/UserDefaultsLidAwakeStore.h"
#include "session/UserDefaultsAwakeIntentStore.h"
#include "session/UserDefaultsProcessBindingStore.h"

namespace wakeloft::WakeloftCommand {

namespace {

using Subcommand = CommandOptions::Subcommand;
using Kind = AutomationOutcome::Kind;

// The status's words are English, so are its durations.
constexpr const char* statusLocale = "en";

int usage(System& system, const std::string& reason) {
  system.err << "wakeloft: " << reason << "\n" << CommandOptions::usage;
  return usageError;
}

// A random id in the shape of a UUID, so answers to other commands running
// at the same time are not taken for this one's.
std::string newRequestID() {
  std::random_device random;
  std::string id;
  constexpr const char* digits = "0123456789abcdef";
  for (int i = 0; i < 32; ++i) {
    if (i == 8 || i == 12 || i == 16 || i == 20) id += '-';
    id += digits[random() & 0xF];
  }
  return id;
}

// One address on its way: listens for the app's answers from before it is
// sent until the command is done with it.
class Exchange {
 public:
  Exchange(System& system, AutomationRequest request) : system_(system), request_(std::move(request)) {
    request_.requestId = newRequestID();
  }
  Exchange(const Exchange&) = delete;
  Exchange& operator=(const Exchange&) = delete;
  ~Exchange() { system_.outcomes.stop(); }

  // Sends the request once the app's parser has read it back as the same
  // request; says why not otherwise. `heard` gets the answers meant for it.
  std::optional<std::string> send(std::function<void(const AutomationOutcome&)> heard) {
    const std::string address = AutomationAddress::write(request_);
    const auto parsed = AutomationAddress::parse(address);
    if (const auto* error = std::get_if<AutomationError>(&parsed)) return error->reason;
    if (std::get<AutomationRequest>(parsed) != request_) return "the address " + address + " reads differently";
    wasRunning_ = system_.app.isAppRunning();
    try {
      system_.outcomes.listen([this, heard = std::move(heard)](const AutomationOutcome& outcome) {
        const bool ours = outcome.requestId == request_.requestId ||
                          (outcome.kind == Kind::released && outcome.pid == request_.pid && request_.pid > 0);
        if (ours) heard(outcome);
      });
    } catch (const std::exception& error) {
      // The request still goes; only its answer will not be heard.
      system_.err << "wakeloft: the app's answer cannot be heard: " << error.what() << "\n";
    }
    try {
      system_.app.open(address);
    } catch (const std::exception& error) {
      system_.outcomes.stop();
      return std::string("the app could not be reached: ") + error.what();
    }
    return std::nullopt;
  }

  // A cold launch takes longer to answer.
  double answerTimeout() const { return wasRunning_ ? WakeloftCommand::answerTimeout : coldAnswerTimeout; }

 private:
  System& system_;
  AutomationRequest request_;
  bool wasRunning_ = true;
};

int status(System& system) {
  auto& defaults = system.app.appDefaults();
  const CommandStatus::Facts facts{system.app.isAppRunning(), UserDefaultsAwakeIntentStore(defaults).load(),
                                   UserDefaultsProcessBindingStore(defaults).load(),
                                   PublishedDeepwake::read(defaults), [&system](const ProcessIdentity& process) {
                                     const auto running = system.processes.find(process.pid);
                                     return running && running->identity == process;
                                   },
                                   PublishedAutomaticSession::read(defaults)};
  system.out << CommandStatus::render(facts, system.now(), statusLocale);
  return 0;
}

int doctor(System& system, const CommandOptions& options) {
  if (!system.doctorFacts) {
    system.err << "wakeloft: the doctor cannot look at this system\n";
    return unavailable;
  }
  DoctorFacts facts;
  try {
    facts = system.doctorFacts(options);
  } catch (const std::invalid_argument& error) {
    return usage(system, error.what());
  }
  auto& defaults = system.app.appDefaults();
  facts.now = system.now();
  facts.isAppRunning = system.app.isAppRunning();
  const auto published = PublishedLidHelper::read(defaults);
  facts.helperRegistration = published.status;
  facts.helperVersion = published.version;
  facts.hasUsedDeepwake = UserDefaultsLidAwakeStore(defaults).hasAcknowledgedHeatWarning();
  facts.guardrails = StoredValueCheck::guardrailSettings(defaults);
  facts.unreadableValues = StoredValueCheck::unreadableKeys(defaults);
  const DoctorReport report(facts);
  system.out << (options.json ? report.json() : report.text());
  return report.exitStatus();
}

int ask(System& system, const AutomationRequest& request) {
  Exchange exchange(system, request);
  std::optional<AutomationOutcome> answer;
  if (const auto failure = exchange.send([&answer](const AutomationOutcome& outcome) {
        if (outcome.kind != Kind::released) answer = outcome;
      })) {
    system.err << "wakeloft: " << *failure << "\n";
    return unavailable;
  }
  if (!system.loopUntil([&answer] { return answer.has_value(); }, exchange.answerTimeout())) {
    system.err << "wakeloft: the request was delivered, but Wakeloft did not answer\n";
    return 0;
  }
  if (answer->kind == Kind::refused) {
    system.err << "wakeloft: Wakeloft refused: " << answer->reason << "\n";
    return refused;
  }
  return 0;
}

// While `what` (pid `pid`) runs: says once when the app refuses to keep the
// Mac awake for it, or lets go of it.
std::function<void(const AutomationOutcome&)> reportHolding(System& system, std::string what) {
  return [&system, what = std::move(what), told = false](const AutomationOutcome& outcome) mutable {
    if (outcome.kind == Kind::accepted || told) return;
    told = true;
    system.err << "wakeloft: Wakeloft "
               << (outcome.kind == Kind::refused ? "refused to keep the Mac awake" : "no longer keeps the Mac awake")
               << " for " << what << ": " << outcome.reason << "\n";
  };
}

int wait(System& system, const CommandOptions& options) {
  const auto request = AutomationRequest::hold(options.pid, options.duration, options.deepwake);
  // The grammar's own word on pids 0 and 1 before the table's.
  const auto checked = AutomationAddress::parse(AutomationAddress::write(request));
  if (const auto* error = std::get_if<AutomationError>(&checked)) return usage(system, error->reason);
  const auto process = system.processes.find(options.pid);
  if (!process) {
    system.err << "wakeloft: there is no process " << options.pid << "\n";
    return noSuchProcess;
  }
  const std::string what = process->name + " (pid " + std::to_string(options.pid) + ")";
  Exchange exchange(system, request);
  // The waiting goes on whether or not the app keeps the Mac awake for it.
  if (const auto failure = exchange.send(reportHolding(system, what))) {
    system.err << "wakeloft: " << what << " runs without keeping the Mac awake: " << *failure << "\n";
  }
  bool ended = false;
  try {
    system.exits.watch(options.pid, [&ended] { ended = true; });
  } catch (const std::exception& error) {
    system.err << "wakeloft: the end of " << what << " cannot be followed: " << error.what() << "\n";
    return noSuchProcess;
  }
  system.loopUntil([&ended] { return ended; }, std::nullopt);
  return 0;
}

int runCommand(System& system, const CommandOptions& options) {
  std::optional<Exchange> exchange;
  const auto outcome = ChildCommand::run(
      options.command,
      [&](pid_t pid) {
        // The work goes on whether or not the app can keep the Mac awake for it.
        exchange.emplace(system, AutomationRequest::hold(pid, options.duration, options.deepwake));
        if (const auto failure = exchange->send(reportHolding(system, options.command.front()))) {
          system.err << "wakeloft: " << options.command.front() << " runs without keeping the Mac awake: " << *failure
                     << "\n";
        }
      },
      [&system](const std::function<bool()>& done) { system.loopUntil(done, std::nullopt); });
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
    case Subcommand::doctor: return doctor(system, options);
  }
  return usageError;
}

}  // namespace wakeloft::WakeloftCommand
