#include "ui/PanelAction.h"

#include "base/MainThread.h"

namespace wakeloft {

void perform(const PanelAction& action, const Controllers& controllers,
             const std::function<void()>& openLoginItemsSettings,
             const std::function<void()>& revealApplicationsFolder) {
  requireMainThread("a panel action");
  auto& awake = *controllers.awake;
  auto& lid = *controllers.lid;
  using Operation = PanelAction::Operation;
  switch (action.operation()) {
    case Operation::toggleAwakeMode:
      // Deepwake goes first, so it never outlives the session it rides on,
      // not even until its deadline check runs.
      if (awake.isOn()) lid.turnOff();
      awake.toggle();
      return;
    case Operation::turnOnAwakeMode:
      awake.turnOn(action.duration() ? std::optional(action.duration()->seconds) : std::nullopt);
      return;
    case Operation::setDeepwake:
      if (action.isOn()) {
        lid.turnOnJoiningSessionOr(AwakeDuration::lidClosedDefault.seconds);
      } else {
        lid.turnOff();
      }
      return;
    case Operation::acknowledgeHeatWarning: lid.acknowledgeHeatWarning(); return;
    case Operation::stopRetrying: awake.turnOff(); return;
    case Operation::setOpenAtLogin: controllers.loginItem->setEnabled(action.isOn()); return;
    case Operation::setKeepScreenOn:
      if (controllers.screenOn) controllers.screenOn->setKeepsScreenOn(action.isOn());
      return;
    case Operation::openLoginItemsSettings:
      if (openLoginItemsSettings) openLoginItemsSettings();
      return;
    case Operation::answerDeepwakeAutomation:
      if (controllers.consent) controllers.consent->answer(action.isOn());
      return;
    case Operation::revealApplicationsFolder:
      if (revealApplicationsFolder) revealApplicationsFolder();
      return;
    case Operation::refreshOnOpen:
      // The login item first: the user may just have approved it. Then the
      // session, so that the lease check sees whether it still runs.
      controllers.loginItem->refresh();
      awake.checkExpiry();
      lid.checkLease();
      lid.refresh();
      if (controllers.consent) controllers.consent->reload();
      return;
    case Operation::resumeAutomaticSessions:
      if (controllers.automatic) controllers.automatic->resume();
      return;
  }
}

}  // namespace wakeloft
