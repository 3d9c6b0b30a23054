#include "automation/AutomationOutcome.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>

#include "automation/AutomationAddress.h"

namespace wakeloft {

namespace {

using Kind = AutomationOutcome::Kind;

constexpr std::array<std::pair<Kind, std::string_view>, 3> kindNames = {{
    {Kind::accepted, "accepted"},
    {Kind::refused, "refused"},
    {Kind::released, "released"},
}};

bool isControl(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x20 || byte == 0x7F;
}

// Takes `key=` and the value up to the next ';' off the front of `rest`.
std::optional<std::string_view> field(std::string_view& rest, std::string_view key) {
  if (!rest.starts_with(key) || rest.substr(key.size()).empty() || rest[key.size()] != '=') return std::nullopt;
  rest.remove_prefix(key.size() + 1);
  const auto end = rest.find(';');
  if (end == std::string_view::npos) return std::nullopt;
  const auto value = rest.substr(0, end);
  rest.remove_prefix(end + 1);
  return value;
}

}  // namespace

std::string AutomationOutcome::encode() const {
  std::string line;
  for (const auto& [named, name] : kindNames) {
    if (named == kind) line = name;
  }
  line += ";id=" + requestId + ";pid=" + std::to_string(pid) + ";reason=";
  std::string text = reason.substr(0, longest > line.size() ? longest - line.size() : 0);
  // Cut at the start of a UTF-8 sequence, never inside one.
  if (text.size() < reason.size()) {
    while (!text.empty() && (static_cast<unsigned char>(reason[text.size()]) & 0xC0) == 0x80) text.pop_back();
  }
  for (auto& c : text) c = isControl(c) ? ' ' : c;
  return line + text;
}

std::variant<AutomationOutcome, AutomationError> AutomationOutcome::parse(std::string_view line) {
  if (line.size() > longest) return AutomationError{"the outcome is longer than any the app sends"};
  for (const char c : line) {
    if (isControl(c)) return AutomationError{"the outcome has a control character"};
  }
  AutomationOutcome outcome;
  const auto kindEnd = line.find(';');
  const auto kindName = line.substr(0, kindEnd);
  bool known = false;
  for (const auto& [named, name] : kindNames) {
    if (name == kindName) {
      outcome.kind = named;
      known = true;
    }
  }
  if (!known) return AutomationError{"the outcome's kind is not accepted, refused or released"};
  std::string_view rest = line.substr(kindEnd + 1);

  const auto id = field(rest, "id");
  if (!id || (!id->empty() && !AutomationAddress::isRequestID(*id))) {
    return AutomationError{"the outcome has no id= of letters, digits or hyphens"};
  }
  outcome.requestId = std::string(*id);

  const auto pid = field(rest, "pid");
  long long number = -1;
  // Digits only, without leading zeros, so a line read is the line written back.
  const auto isDigits = [](std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
  };
  if (pid && !pid->empty() && isDigits(*pid) && (pid->size() == 1 || pid->front() != '0')) {
    const auto [end, error] = std::from_chars(pid->data(), pid->data() + pid->size(), number);
    if (error != std::errc() || end != pid->data() + pid->size() || number > std::numeric_limits<pid_t>::max()) {
      number = -1;
    }
  }
  if (number < 0) return AutomationError{"the outcome has no pid= process number"};
  if ((outcome.kind == Kind::released) != (number > 1)) {
    return AutomationError{"only a released outcome names a process, and it is above 1"};
  }
  outcome.pid = static_cast<pid_t>(number);

  if (!rest.starts_with("reason=")) return AutomationError{"the outcome ends without reason="};
  outcome.reason = std::string(rest.substr(7));
  if (outcome.kind == Kind::accepted && !outcome.reason.empty()) {
    return AutomationError{"an accepted outcome gives no reason"};
  }
  return outcome;
}

}  // namespace wakeloft
