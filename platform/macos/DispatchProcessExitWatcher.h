#pragma once

#include <memory>

#include "base/ProcessExitWatcher.h"
#include "base/WeakSelf.h"

namespace wakeloft {

// A process's end through a dispatch source of type PROC on the main queue,
// the kernel's kqueue exit event. A pid that is already gone gets an exit
// event all the same. The sources are kept out of this header: a dispatch
// object is a plain pointer in C++ and an ARC object in Objective-C++, and
// every file must see the same class.
class DispatchProcessExitWatcher final : public ProcessExitWatcher {
 public:
  DispatchProcessExitWatcher();
  DispatchProcessExitWatcher(const DispatchProcessExitWatcher&) = delete;
  DispatchProcessExitWatcher& operator=(const DispatchProcessExitWatcher&) = delete;
  ~DispatchProcessExitWatcher() override;

  void watch(pid_t pid, std::function<void()> ended) override;
  void cancel(pid_t pid) override;

 private:
  struct Sources;
  void fire(pid_t pid, unsigned long watch);

  std::unique_ptr<Sources> sources_;
  WeakSelf<DispatchProcessExitWatcher> weakSelf_{this};
};

}  // namespace wakeloft
