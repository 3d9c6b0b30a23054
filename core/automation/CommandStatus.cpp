#include "automation/CommandStatus.h"

#include "status/CountdownText.h"

namespace wakeloft::CommandStatus {

std::string render(const Facts& facts, Date now, const std::string& locale) {
  // A lapsed deadline or a garbled record is no session: the app ends the
  // one and cleans the other.
  const auto& intent = facts.intent.readable();
  const auto deadline = intent ? intent->date() : std::nullopt;
  const bool requested = intent && intent->kind() != AwakeIntent::Kind::off && (!deadline || *deadline > now);

  std::string text = facts.isAppRunning ? "Wakeloft: running\n" : "Wakeloft: not running\n";
  if (!requested) {
    text += "Awake: off\n";
  } else if (!facts.isAppRunning) {
    text += "Awake: off, back on when Wakeloft opens\n";
  } else {
    text += "Awake: on";
    if (deadline) text += ", " + CountdownText::formatted(deadline->secondsSince(now), locale) + " left";
    if (const auto& process = facts.binding.process()) {
      text += std::string(deadline ? ", or" : "") + " until " + process->name + " (pid " +
              std::to_string(process->identity.pid) + ") ends";
    }
    text += "\n";
  }
  text += facts.isAppRunning && facts.isDeepwakeOn ? "Deepwake: on\n" : "Deepwake: off\n";
  return text;
}

}  // namespace wakeloft::CommandStatus
