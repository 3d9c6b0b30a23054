#pragma once

#include <dispatch/dispatch.h>

#include "base/ProcessExitWatcher.h"
#include "base/WeakSelf.h"

namespace wakeloft {

// A process's end through a dispatch source of type PROC on the main queue,
// the kernel's kqueue exit event. A pid that is already gone gets an exit
// event all the same.
class DispatchProcessExitWatcher final : public ProcessExitWatcher {
 public:
  DispatchProcessExitWatcher() = default;
  DispatchProcessExitWatcher(const DispatchProcessExitWatcher&) = delete;
  DispatchProcessExitWatcher& operator=(const DispatchProcessExitWatcher&) = delete;
  ~DispatchProcessExitWatcher() override;

  void watch(pid_t pid, std::function<void()> ended) override;
  void cancel() override;

 private:
  void fire(unsigned long watch);

  dispatch_source_t source_ = nullptr;
  std::function<void()> ended_;
  // Tells an event of a watch that was replaced from one of this watch.
  unsigned long watches_ = 0;
  WeakSelf<DispatchProcessExitWatcher> weakSelf_{this};
};

}  // namespace wakeloft
