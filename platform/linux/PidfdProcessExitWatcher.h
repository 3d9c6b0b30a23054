#pragma once

#include <glib.h>

#include <map>
#include <memory>

#include "base/ProcessExitWatcher.h"

namespace wakeloft {

// A process's end through a pidfd (Linux 5.3 and later), which turns
// readable when the process exits, watched on GLib's default main context.
class PidfdProcessExitWatcher final : public ProcessExitWatcher {
 public:
  PidfdProcessExitWatcher();
  PidfdProcessExitWatcher(const PidfdProcessExitWatcher&) = delete;
  PidfdProcessExitWatcher& operator=(const PidfdProcessExitWatcher&) = delete;
  ~PidfdProcessExitWatcher() override;

  void watch(pid_t pid, std::function<void()> ended) override;
  void cancel(pid_t pid) override;

 private:
  struct Watch;
  static gboolean fired(gpointer watch);
  static gboolean fdReady(gint fd, GIOCondition condition, gpointer watch);

  std::map<pid_t, std::unique_ptr<Watch>> watches_;
};

}  // namespace wakeloft
