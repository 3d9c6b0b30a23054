#include "ProcfsProcessTable.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <string>

namespace wakeloft {

namespace {

// The fields after the name, counted from the state (field 3) on.
constexpr int stateField = 3;
constexpr int startTimeField = 22;

}  // namespace

std::optional<RunningProcess> ProcfsProcessTable::parse(std::string_view stat, pid_t pid) {
  // "PID (NAME) STATE ...": the name may hold spaces and parentheses, so it
  // ends at the last ')'.
  const auto open = stat.find('(');
  const auto close = stat.rfind(')');
  if (open == std::string_view::npos || close == std::string_view::npos || close < open) return std::nullopt;
  RunningProcess process{{pid, 0}, std::string(stat.substr(open + 1, close - open - 1))};

  std::string_view rest = stat.substr(close + 1);
  for (int field = stateField; field <= startTimeField; ++field) {
    const auto start = rest.find_first_not_of(' ');
    if (start == std::string_view::npos) return std::nullopt;
    rest.remove_prefix(start);
    const auto end = std::min(rest.find(' '), rest.size());
    const std::string_view value = rest.substr(0, end);
    // Zombies and the dead have ended, whoever has yet to reap them.
    if (field == stateField && (value == "Z" || value == "X" || value == "x")) return std::nullopt;
    if (field == startTimeField) {
      const auto [last, error] = std::from_chars(value.data(), value.data() + value.size(), process.identity.startTime);
      if (error != std::errc() || last != value.data() + value.size()) return std::nullopt;
    }
    rest.remove_prefix(end);
  }
  return process;
}

std::optional<RunningProcess> ProcfsProcessTable::find(pid_t pid) const {
  if (pid <= 0) return std::nullopt;
  const std::string path = "/proc/" + std::to_string(pid) + "/stat";
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return std::nullopt;
  // One short line; /proc gives it in one read.
  char line[1024];
  const ssize_t got = ::read(fd, line, sizeof line);
  ::close(fd);
  if (got <= 0) return std::nullopt;
  return parse(std::string_view(line, static_cast<std::size_t>(got)), pid);
}

}  // namespace wakeloft
