#pragma once

#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

#include "base/ProcessExitWatcher.h"
#include "base/ProcessTable.h"

namespace wakeloft::testing {

// Processes that start, end and reuse pids when the test says so.
struct SettableProcessTable final : ProcessTable {
  std::map<pid_t, RunningProcess> running;

  void start(pid_t pid, std::uint64_t startTime, std::string name) {
    running[pid] = {{pid, startTime}, std::move(name)};
  }
  std::optional<RunningProcess> find(pid_t pid) const override {
    const auto found = running.find(pid);
    if (found == running.end()) return std::nullopt;
    return found->second;
  }
};

// An exit watcher whose processes end when the test says so.
struct ManualProcessExitWatcher final : ProcessExitWatcher {
  std::map<pid_t, std::function<void()>> watching;
  // Thrown by the next watch, as a system that cannot watch would.
  std::optional<std::string> refusal;
  // Runs as a watch starts: what may happen to the process just then.
  std::function<void()> whileWatching;

  void watch(pid_t pid, std::function<void()> ended) override {
    if (auto reason = std::exchange(refusal, std::nullopt)) throw std::runtime_error(*reason);
    watching[pid] = std::move(ended);
    if (auto happen = std::exchange(whileWatching, nullptr)) happen();
  }
  void cancel(pid_t pid) override { watching.erase(pid); }
  bool isWatching(pid_t pid) const { return watching.contains(pid); }
  // Process `pid` ends, as the main loop would report it.
  void end(pid_t pid) {
    const auto found = watching.find(pid);
    if (found == watching.end()) return;
    auto fire = std::move(found->second);
    watching.erase(found);
    fire();
  }
};

}  // namespace wakeloft::testing
