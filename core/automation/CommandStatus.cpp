#include "automation/CommandStatus.h"

#include "status/CountdownText.h"

namespace wakeloft::CommandStatus {

namespace {

// Whether the app, opening, takes the session up again: a record of
// processes keeps it only through the user's claim or a process that runs.
bool comesBack(const Facts& facts, Date now) {
  const auto& claims = facts.binding.claims();
  if (facts.binding.isUnreadable()) return false;
  if (!claims) return true;
  if (claims->user && (!claims->user->until || *claims->user->until > now)) return true;
  for (const auto& hold : claims->holds) {
    if ((!hold.until || *hold.until > now) && facts.isRunning(hold.process.identity)) return true;
  }
  return false;
}

std::string named(const RunningProcess& process) {
  return process.name + " (pid " + std::to_string(process.identity.pid) + ")";
}

}  // namespace

std::string render(const Facts& facts, Date now, const std::string& locale) {
  // A lapsed deadline or a garbled record is no session: the app ends the
  // one and cleans the other.
  const auto& intent = facts.intent.readable();
  const auto deadline = intent ? intent->date() : std::nullopt;
  const bool requested = intent && intent->kind() != AwakeIntent::Kind::off && (!deadline || *deadline > now);

  std::string text = facts.isAppRunning ? "Wakeloft: running\n" : "Wakeloft: not running\n";
  if (!requested && facts.isAppRunning && facts.automaticReason) {
    text += "Awake: on, automatically, " + *facts.automaticReason + "\n";
  } else if (!requested) {
    text += "Awake: off\n";
  } else if (!facts.isAppRunning) {
    text += comesBack(facts, now) ? "Awake: off, back on when Wakeloft opens\n" : "Awake: off\n";
  } else {
    text += "Awake: on";
    if (deadline) text += ", " + CountdownText::formatted(deadline->secondsSince(now), locale) + " left";
    const auto processes = facts.binding.claims() ? facts.binding.claims()->endingLast() : std::vector<RunningProcess>{};
    if (!processes.empty()) text += deadline ? ", or until " : " until ";
    if (processes.size() == 1) text += named(processes.front()) + " ends";
    for (std::size_t i = 0; i < processes.size() && processes.size() > 1; ++i) {
      text += (i == 0 ? std::to_string(processes.size()) + " processes end: " : ", ") + named(processes[i]);
    }
    text += "\n";
  }
  text += facts.isAppRunning && facts.isDeepwakeOn ? "Deepwake: on\n" : "Deepwake: off\n";
  return text;
}

}  // namespace wakeloft::CommandStatus
