#include "helper/PmsetCommand.h"

#include <span>
#include <stdexcept>

#include "base/Utf8.h"
#include "lease/LidSleepLease.h"

namespace wakeloft::PmsetCommand {

namespace {

constexpr std::string_view settingKey = "SleepDisabled";
// Either heading shows that the listing is pmset's. When the setting was
// never changed the system-wide part is empty; some releases leave out its
// heading then.
constexpr std::string_view systemWideHeading = "System-wide power settings:";
constexpr std::string_view inUseHeading = "Currently in use:";
// Enough of a complaint to recognise it; it ends up in a reply.
constexpr std::size_t longestQuote = 200;

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

std::string_view trimmed(std::string_view line) {
  while (!line.empty() && isBlank(line.front())) line.remove_prefix(1);
  while (!line.empty() && isBlank(line.back())) line.remove_suffix(1);
  return line;
}

std::vector<std::string_view> lines(std::string_view text) {
  std::vector<std::string_view> result;
  while (!text.empty()) {
    const auto end = text.find('\n');
    result.push_back(text.substr(0, end));
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + 1);
  }
  return result;
}

std::vector<std::string_view> words(std::string_view line) {
  std::vector<std::string_view> result;
  for (line = trimmed(line); !line.empty(); line = trimmed(line)) {
    std::size_t end = 0;
    while (end < line.size() && !isBlank(line[end])) ++end;
    result.push_back(line.substr(0, end));
    line.remove_prefix(end);
  }
  return result;
}

// A line of the tool's own words, safe to pass on: valid UTF-8, not too long.
std::string quoted(std::string_view line) {
  line = trimmed(line);
  const bool cut = line.size() > longestQuote;
  if (cut) line = line.substr(0, longestQuote);
  std::string text = Utf8::repaired(std::span(reinterpret_cast<const std::uint8_t*>(line.data()), line.size()));
  // A character split by the cut shows as a replacement, then the mark.
  return cut ? text + "\u2026" : text;
}

std::string firstWords(const std::string& output) {
  for (const auto line : lines(output)) {
    if (!trimmed(line).empty()) return quoted(line);
  }
  return {};
}

std::string failure(std::string_view what, const ChildProcess::Result& result) {
  std::string text = std::string(what) + " failed with exit status " + std::to_string(result.exitStatus);
  const auto said = firstWords(result.output);
  return said.empty() ? text : text + ": " + said;
}

}  // namespace

std::vector<std::string> writeArguments(bool disabled, std::string_view pmset) {
  return {std::string(pmset), "-a", "disablesleep", disabled ? "1" : "0"};
}

std::vector<std::string> readArguments(std::string_view pmset) { return {std::string(pmset), "-g"}; }

void write(bool disabled, const Run& run, std::string_view pmset) {
  checkWritten(run(writeArguments(disabled, pmset), LidSleepLease::writeTimeout));
}

bool read(const Run& run, std::string_view pmset) {
  return sleepDisabled(run(readArguments(pmset), LidSleepLease::readTimeout));
}

bool sleepDisabled(const ChildProcess::Result& listing) {
  if (listing.exitStatus != 0) throw std::runtime_error(failure("pmset -g", listing));
  bool recognised = false;
  for (const auto line : lines(listing.output)) {
    const auto fields = words(line);
    if (!fields.empty() && fields[0] == settingKey) {
      // Anything after the value (a note on who asked for it) is not ours.
      if (fields.size() >= 2 && fields[1] == "1") return true;
      if (fields.size() >= 2 && fields[1] == "0") return false;
      throw std::runtime_error("pmset -g gave no value of 0 or 1 for SleepDisabled: " + quoted(line));
    }
    const auto heading = trimmed(line);
    if (heading == systemWideHeading || heading == inUseHeading) recognised = true;
  }
  if (recognised) return false;
  const auto said = firstWords(listing.output);
  throw std::runtime_error(said.empty() ? "pmset -g listed no power settings"
                                        : "pmset -g listed no power settings: " + said);
}

void checkWritten(const ChildProcess::Result& result) {
  if (result.exitStatus != 0) throw std::runtime_error(failure("pmset", result));
}

}  // namespace wakeloft::PmsetCommand
