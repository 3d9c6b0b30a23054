#include "ui/QuitFlow.h"

#include "base/MainThread.h"

namespace wakeloft {

QuitFlow::QuitFlow(Ask ask, IsSystemQuit isSystemQuit, Reply reply, After after)
    : ask_(std::move(ask)), isSystemQuit_(std::move(isSystemQuit)), reply_(std::move(reply)), after_(std::move(after)) {}

void QuitFlow::attach(std::shared_ptr<AwakeController> awake, std::shared_ptr<LidAwakeController> lid,
                      std::shared_ptr<const ProcessBindingController> binding) {
  if (awake_) return;
  awake_ = std::move(awake);
  lid_ = std::move(lid);
  binding_ = std::move(binding);
}

TerminateReply QuitFlow::shouldTerminate() {
  requireMainThread("QuitFlow::shouldTerminate");
  if (isSystemQuit_() || isRelaunchingForUpdate_) {
    // The system asks again when the app is slow to quit; the second time it
    // gets its way.
    if (isWaitingForHelper_) {
      isWaitingForHelper_ = false;
      return TerminateReply::now;
    }
    if (lid_) lid_->turnOff();
    return quitOnceTheHelperHasAnswered();
  }

  if (isAsking_ || isWaitingForHelper_) return TerminateReply::cancel;

  // A session that ran out a moment ago is not worth a question.
  if (awake_) awake_->checkExpiry();
  if (lid_) lid_->checkLease();
  if (!awake_) return quitOnceTheHelperHasAnswered();

  // An automatic session comes back with its rules at the next launch.
  const auto confirmation =
      QuitConfirmation::asked(awake_->isOn() && !awake_->isAutomatic(), lid_ ? lid_->isOn() : false,
                              awake_->remaining(), !binding_ || !binding_->isHeldOnlyForProcesses());
  if (confirmation.kind() == QuitConfirmation::Kind::quitNow) return quitOnceTheHelperHasAnswered();

  isAsking_ = true;
  TerminateReply result = TerminateReply::cancel;
  if (ask_(confirmation)) {
    if (lid_) lid_->turnOff();
    result = quitOnceTheHelperHasAnswered();
  }
  isAsking_ = false;
  return result;
}

TerminateReply QuitFlow::quitOnceTheHelperHasAnswered() {
  if (!lid_ || lid_->isSettled()) return TerminateReply::now;
  isWaitingForHelper_ = true;
  lid_->whenSettled(weakSelf_([](QuitFlow& self) { self.helperAnsweredOrTimedOut(); }));
  after_(helperWaitLimit, weakSelf_([](QuitFlow& self) { self.helperAnsweredOrTimedOut(); }));
  return TerminateReply::later;
}

void QuitFlow::helperAnsweredOrTimedOut() {
  requireMainThread("QuitFlow's reply");
  // Whichever comes second finds the answer given.
  if (!isWaitingForHelper_) return;
  isWaitingForHelper_ = false;
  reply_(true);
}

}  // namespace wakeloft
