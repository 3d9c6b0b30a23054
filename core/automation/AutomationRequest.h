#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

#include "session/AwakeDuration.h"

namespace wakeloft {

// What a wakeloft:// address asks of the app.
struct AutomationRequest {
  enum class Action {
    // A session; with a duration, a timed one.
    start,
    stop,
    // The panel's main button.
    toggle,
    // The panel's Deepwake switch, to `on`.
    deepwake,
    // A session until process `pid` ends (or the duration passes), with
    // Deepwake when `deepwake` is set.
    hold,
  };

  Action action = Action::start;
  std::optional<AwakeDuration> duration;
  bool on = false;
  pid_t pid = 0;
  bool deepwake = false;
  // The id= key the command sends so the app's answer can name this request;
  // empty when the address carried none.
  std::string requestId;

  static AutomationRequest of(Action action) {
    AutomationRequest request;
    request.action = action;
    return request;
  }
  static AutomationRequest start(std::optional<AwakeDuration> duration) {
    auto request = of(Action::start);
    request.duration = duration;
    return request;
  }
  static AutomationRequest stop() { return of(Action::stop); }
  static AutomationRequest toggle() { return of(Action::toggle); }
  static AutomationRequest switchDeepwake(bool on) {
    auto request = of(Action::deepwake);
    request.on = on;
    return request;
  }
  static AutomationRequest hold(pid_t pid, std::optional<AwakeDuration> duration, bool deepwake) {
    auto request = start(duration);
    request.action = Action::hold;
    request.pid = pid;
    request.deepwake = deepwake;
    return request;
  }

  friend bool operator==(const AutomationRequest&, const AutomationRequest&) = default;
};

}  // namespace wakeloft
