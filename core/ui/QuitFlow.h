#pragma once

#include <functional>
#include <memory>

#include "base/WeakSelf.h"
#include "clock/MainRunLoop.h"
#include "lid/LidAwakeController.h"
#include "session/AwakeController.h"
#include "session/ProcessBindingController.h"
#include "status/QuitConfirmation.h"

namespace wakeloft {

// The application delegate's answer to a terminate request.
enum class TerminateReply { now, cancel, later };

// Every decision of quitting: whether to ask first, when to ignore a request,
// and how long to wait for Deepwake to hand the sleep setting back. The
// macOS QuitConfirmationDelegate is a thin AppKit wrapper around it: it
// passes applicationShouldTerminate on, maps the reply onto
// NSApplicationTerminateReply, and supplies the four operations below.
// Main thread only.
class QuitFlow {
 public:
  // Shows the question and answers whether the user confirmed.
  using Ask = std::function<bool(const QuitConfirmation&)>;
  // Whether the current quit comes from the system (log out, restart, ...).
  using IsSystemQuit = std::function<bool()>;
  // Answers a terminate-later reply.
  using Reply = std::function<void(bool)>;
  // Runs the closure on the main thread after the delay in seconds.
  using After = std::function<void(double, std::function<void()>)>;

  // How long a quit waits for the helper before it goes ahead anyway; the
  // helper's own lease ends soon after.
  static constexpr double helperWaitLimit = 5.0;

  // `after` is the main loop's own delay unless a test brings its clock.
  QuitFlow(Ask ask, IsSystemQuit isSystemQuit, Reply reply, After after = MainRunLoop::performAfter);
  QuitFlow(const QuitFlow&) = delete;
  QuitFlow& operator=(const QuitFlow&) = delete;

  // Gives the flow its controllers, once: later calls change nothing, so a
  // second start of the interface cannot swap them.
  void attach(std::shared_ptr<AwakeController> awake, std::shared_ptr<LidAwakeController> lid,
              std::shared_ptr<const ProcessBindingController> binding = nullptr);
  bool hasControllers() const { return awake_ != nullptr; }

  // Set just before an update relaunches the app: that quit is not questioned.
  void setRelaunchingForUpdate(bool relaunching) { isRelaunchingForUpdate_ = relaunching; }
  bool isRelaunchingForUpdate() const { return isRelaunchingForUpdate_; }

  TerminateReply shouldTerminate();
  // Now when Deepwake has nothing outstanding; otherwise later, replying yes
  // once the helper has answered or the wait limit has passed, whichever
  // comes first.
  TerminateReply quitOnceTheHelperHasAnswered();

  bool isAsking() const { return isAsking_; }
  bool isWaitingForHelper() const { return isWaitingForHelper_; }

 private:
  void helperAnsweredOrTimedOut();

  Ask ask_;
  IsSystemQuit isSystemQuit_;
  Reply reply_;
  After after_;
  std::shared_ptr<AwakeController> awake_;
  std::shared_ptr<LidAwakeController> lid_;
  std::shared_ptr<const ProcessBindingController> binding_;
  bool isRelaunchingForUpdate_ = false;
  bool isAsking_ = false;
  bool isWaitingForHelper_ = false;
  WeakSelf<QuitFlow> weakSelf_{this};
};

}  // namespace wakeloft
