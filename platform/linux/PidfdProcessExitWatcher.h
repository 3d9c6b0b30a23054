#pragma once

#include <glib.h>

#include "base/ProcessExitWatcher.h"

namespace wakeloft {

// A process's end through a pidfd (Linux 5.3 and later), which turns
// readable when the process exits, watched on GLib's default main context.
class PidfdProcessExitWatcher final : public ProcessExitWatcher {
 public:
  PidfdProcessExitWatcher() = default;
  PidfdProcessExitWatcher(const PidfdProcessExitWatcher&) = delete;
  PidfdProcessExitWatcher& operator=(const PidfdProcessExitWatcher&) = delete;
  ~PidfdProcessExitWatcher() override;

  void watch(pid_t pid, std::function<void()> ended) override;
  void cancel() override;

 private:
  static gboolean fdReady(gint fd, GIOCondition condition, gpointer self);
  static gboolean alreadyEnded(gpointer self);
  void fire();

  int fd_ = -1;
  guint source_ = 0;
  std::function<void()> ended_;
};

}  // namespace wakeloft
