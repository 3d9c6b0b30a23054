#include "automation/AutomationAddress.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <map>
#include <optional>

#include "automation/AutomationDuration.h"

namespace wakeloft::AutomationAddress {

namespace {

using Action = AutomationRequest::Action;

struct ActionName {
  std::string_view name;
  Action action;
  // The keys it takes; the first ones until `required` must be there.
  std::array<std::string_view, 3> keys;
  std::size_t required;
};

constexpr std::array<ActionName, 5> actions = {{
    {"start", Action::start, {"for"}, 0},
    {"stop", Action::stop, {}, 0},
    {"toggle", Action::toggle, {}, 0},
    {"deepwake", Action::deepwake, {"on"}, 1},
    {"hold", Action::hold, {"pid", "for", "deepwake"}, 1},
}};

// Every action takes it: the id the app's answer names.
constexpr std::string_view idKey = "id";

std::string lowered(std::string_view text) {
  std::string lower(text);
  for (auto& c : lower) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
  return lower;
}

std::string quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

std::variant<bool, AutomationError> switchPosition(std::string_view key, std::string_view value) {
  if (value == "1") return true;
  if (value == "0") return false;
  return AutomationError{std::string(key) + " must be 1 or 0, not " + quoted(value)};
}

std::variant<pid_t, AutomationError> processID(std::string_view value) {
  long long pid = 0;
  const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), pid);
  const bool digitsOnly = !value.empty() && value.front() != '-' && value.front() != '+';
  if (!digitsOnly || error != std::errc() || end != value.data() + value.size() ||
      pid > std::numeric_limits<pid_t>::max()) {
    return AutomationError{"pid must be a process number, not " + quoted(value)};
  }
  if (pid <= 1) return AutomationError{"pid " + std::string(value) + " is the system's own, not a process to wait for"};
  return static_cast<pid_t>(pid);
}

std::variant<std::string, AutomationError> requestID(std::string_view value) {
  if (!isRequestID(value)) {
    return AutomationError{"id must be 1 to " + std::to_string(longestRequestID) +
                           " letters, digits or hyphens, not " + quoted(value)};
  }
  return std::string(value);
}

template <typename T>
bool take(std::variant<T, AutomationError> parsed, T& into, std::optional<AutomationError>& failure) {
  if (auto* error = std::get_if<AutomationError>(&parsed)) {
    failure = std::move(*error);
    return false;
  }
  into = std::get<T>(parsed);
  return true;
}

}  // namespace

bool isRequestID(std::string_view text) {
  return !text.empty() && text.size() <= longestRequestID && std::all_of(text.begin(), text.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
  });
}

std::variant<AutomationRequest, AutomationError> parse(std::string_view address) {
  if (address.size() > longest) return AutomationError{"the address is longer than any Wakeloft reads"};
  for (const char c : address) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x80) return AutomationError{"the address has a character outside ASCII"};
    if (byte <= 0x20 || byte == 0x7F) return AutomationError{"the address has a space or a control character"};
  }
  const auto separator = address.find("://");
  if (separator == std::string_view::npos || lowered(address.substr(0, separator)) != scheme) {
    return AutomationError{"the address does not start with wakeloft://"};
  }

  std::string_view rest = address.substr(separator + 3);
  if (const auto fragment = rest.find('#'); fragment != std::string_view::npos) {
    return AutomationError{"the address has a fragment (#), which Wakeloft does not read"};
  }
  const auto queryStart = rest.find('?');
  std::string_view location = rest.substr(0, queryStart);
  const auto pathStart = location.find('/');
  const std::string_view host = location.substr(0, pathStart);
  if (pathStart != std::string_view::npos && location.substr(pathStart) != "/") {
    return AutomationError{"the address has a path after its action: " + quoted(location.substr(pathStart))};
  }
  // Hosts are case-insensitive (RFC 3986).
  const ActionName* named = nullptr;
  for (const auto& candidate : actions) {
    if (candidate.name == lowered(host)) named = &candidate;
  }
  if (host.empty()) return AutomationError{"the address names no action"};
  if (!named) return AutomationError{"unknown action " + quoted(host)};

  std::map<std::string_view, std::string_view> values;
  if (queryStart != std::string_view::npos) {
    std::string_view query = rest.substr(queryStart + 1);
    if (query.empty()) return AutomationError{"the address has an empty query after \"?\""};
    while (true) {
      const auto amp = query.find('&');
      const std::string_view pair = query.substr(0, amp);
      const auto equals = pair.find('=');
      if (equals == std::string_view::npos || equals == 0 || equals + 1 == pair.size()) {
        return AutomationError{"the query part " + quoted(pair) + " is not KEY=VALUE"};
      }
      const std::string_view key = pair.substr(0, equals);
      bool known = key == idKey;
      for (const auto& allowed : named->keys) known = known || (!allowed.empty() && allowed == key);
      if (!known) return AutomationError{std::string(named->name) + " takes no key " + quoted(key)};
      if (!values.emplace(key, pair.substr(equals + 1)).second) return AutomationError{quoted(key) + " is given twice"};
      if (amp == std::string_view::npos) break;
      query.remove_prefix(amp + 1);
    }
  }
  for (std::size_t i = 0; i < named->required; ++i) {
    if (!values.contains(named->keys[i])) {
      return AutomationError{std::string(named->name) + " needs " + std::string(named->keys[i]) + "="};
    }
  }

  auto request = AutomationRequest::of(named->action);
  std::optional<AutomationError> failure;
  for (const auto& [key, value] : values) {
    bool ok = true;
    if (key == "for") {
      AwakeDuration duration;
      ok = take(AutomationDuration::parse(value), duration, failure);
      request.duration = duration;
    } else if (key == idKey) {
      ok = take(requestID(value), request.requestId, failure);
    } else if (key == "pid") {
      ok = take(processID(value), request.pid, failure);
    } else {
      ok = take(switchPosition(key, value), key == "on" ? request.on : request.deepwake, failure);
    }
    if (!ok) return *failure;
  }
  return request;
}

std::string write(const AutomationRequest& request) {
  std::string address = std::string(scheme) + "://";
  std::string query;
  const auto add = [&query](std::string_view key, const std::string& value) {
    query += (query.empty() ? "?" : "&") + std::string(key) + "=" + value;
  };
  for (const auto& named : actions) {
    if (named.action == request.action) address += named.name;
  }
  switch (request.action) {
    case Action::start:
    case Action::hold:
      if (request.action == Action::hold) add("pid", std::to_string(request.pid));
      if (request.duration) add("for", AutomationDuration::write(*request.duration));
      if (request.action == Action::hold && request.deepwake) add("deepwake", "1");
      break;
    case Action::deepwake: add("on", request.on ? "1" : "0"); break;
    case Action::stop:
    case Action::toggle: break;
  }
  if (!request.requestId.empty()) add(idKey, request.requestId);
  return address + query;
}

}  // namespace wakeloft::AutomationAddress
