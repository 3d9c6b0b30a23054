#include "ui/AutomationHandler.h"

#include "automation/AutomationAddress.h"
#include "base/MainThread.h"
#include "ui/PanelAction.h"

namespace wakeloft {

AutomationHandler::AutomationHandler(Controllers controllers, std::function<void()> showPanel,
                                     std::function<void(const std::string&)> log)
    : controllers_(std::move(controllers)), showPanel_(std::move(showPanel)), log_(std::move(log)) {}

void AutomationHandler::open(std::string_view address) {
  requireMainThread("AutomationHandler");
  const auto parsed = AutomationAddress::parse(address);
  if (const auto* error = std::get_if<AutomationError>(&parsed)) {
    log_("wakeloft address not followed: " + error->reason);
    return;
  }
  const auto& request = std::get<AutomationRequest>(parsed);
  const auto act = [this](const PanelAction& action) { perform(action, controllers_, nullptr); };
  using Action = AutomationRequest::Action;
  switch (request.action) {
    case Action::start: act(PanelAction::turnOnAwakeMode(request.duration)); return;
    case Action::toggle: act(PanelAction::toggleAwakeMode()); return;
    case Action::stop:
      // Deepwake first, as the main button does; a refused session's request
      // goes too.
      controllers_.lid->turnOff();
      controllers_.awake->turnOff();
      return;
    case Action::deepwake:
      if (request.on) {
        turnOnDeepwake();
      } else {
        act(PanelAction::setDeepwake(false));
      }
      return;
    case Action::hold: break;
  }
  // Nothing starts while Deepwake, asked for with it, waits for the warning.
  if (request.deepwake && controllers_.lid->refusal()) {
    showPanel_();
    return;
  }
  if (!controllers_.binding) {
    log_("wakeloft address not followed: this app cannot bind a session to a process");
    return;
  }
  const auto seconds = request.duration ? std::optional(request.duration->seconds) : std::nullopt;
  if (const auto failure = controllers_.binding->hold(request.pid, seconds)) {
    log_("wakeloft address not followed: " + *failure);
    return;
  }
  if (request.deepwake) turnOnDeepwake();
}

void AutomationHandler::turnOnDeepwake() {
  auto& lid = *controllers_.lid;
  if (!lid.refusal()) perform(PanelAction::setDeepwake(true), controllers_, nullptr);
  // The panel says why not: the heat warning, the helper's approval, a refusal.
  if (!lid.isOn() && !lid.isTurningOn()) showPanel_();
}

}  // namespace wakeloft
