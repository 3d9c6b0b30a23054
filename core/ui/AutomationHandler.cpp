#include "ui/AutomationHandler.h"

#include <algorithm>

#include "automation/AutomationAddress.h"
#include "base/MainThread.h"
#include "ui/PanelAction.h"

namespace wakeloft {

namespace {

// For the terminal, in English as the command's own words are.
std::string whyDeepwakeIsOff(const LidAwakeController& lid) {
  if (const auto refusal = lid.refusal()) {
    switch (*refusal) {
      case LidAwakeRefusal::forbiddenByOrganization: return "your organization does not allow Deepwake on this Mac";
      case LidAwakeRefusal::translocated:
        return "Deepwake is off while Wakeloft runs from the copy macOS made of its download; move Wakeloft to "
               "Applications and open it from there";
      case LidAwakeRefusal::unacknowledged: return "Deepwake waits until its heat warning is read in Wakeloft's panel";
    }
  }
  if (const auto& stop = lid.guardrailStop()) {
    using Rule = DeepwakeGuardrails::Stop::Rule;
    switch (stop->rule) {
      case Rule::batteryFloor:
        return "Deepwake stops at " + std::to_string(stop->batteryFloor) + "% battery, and the battery is there";
      case Rule::lowPowerMode: return "Deepwake stops in Low Power Mode, which is on";
      case Rule::criticalHeat: return "Deepwake stops while the Mac is too hot";
      case Rule::lidOpened: return "Deepwake stopped because the lid was opened";
    }
  }
  return "Deepwake could not start; Wakeloft's panel says why";
}

}  // namespace

std::function<void()> AutomationHandler::whenAllowed(std::optional<pid_t> heldPid) const {
  // Not the consent itself, which keeps this.
  Controllers acting = controllers_;
  acting.consent = nullptr;
  return [acting, heldPid] {
    if (heldPid) {
      const auto& holds = acting.binding->holds();
      const auto held = [&](const ProcessHold& hold) { return hold.process.identity.pid == *heldPid; };
      if (std::none_of(holds.begin(), holds.end(), held)) return;
    }
    if (!acting.lid->refusal()) perform(PanelAction::setDeepwake(true), acting, nullptr);
  };
}

AutomationHandler::AutomationHandler(Controllers controllers, std::function<void()> showPanel,
                                     std::function<void(const std::string&)> log,
                                     std::shared_ptr<AutomationOutcomePublisher> outcomes)
    : controllers_(std::move(controllers)),
      showPanel_(std::move(showPanel)),
      log_(std::move(log)),
      outcomes_(std::move(outcomes)) {
  if (!controllers_.binding) return;
  // Only this handler's own holds are ever let go of here, and it lives as long as the app.
  controllers_.binding->observeReleases(
      [outcomes = outcomes_](const RunningProcess& process, ProcessBindingController::Release why) {
        using Release = ProcessBindingController::Release;
        const char* reason = "the session was turned off";
        if (why == Release::timeRanOut) reason = "its time ran out";
        if (why == Release::screenLocked) reason = "the screen locked, and sessions end when it does";
        outcomes->publish({AutomationOutcome::Kind::released, "", process.identity.pid, reason});
      });
}

void AutomationHandler::open(std::string_view address) {
  requireMainThread("AutomationHandler");
  const auto parsed = AutomationAddress::parse(address);
  if (const auto* error = std::get_if<AutomationError>(&parsed)) {
    log_("wakeloft address not followed: " + error->reason);
    return;
  }
  const auto& request = std::get<AutomationRequest>(parsed);
  const auto refusal = follow(request);
  if (refusal) log_("wakeloft address not followed: " + *refusal);
  using Kind = AutomationOutcome::Kind;
  outcomes_->publish({refusal ? Kind::refused : Kind::accepted, request.requestId, 0, refusal.value_or("")});
}

std::optional<std::string> AutomationHandler::follow(const AutomationRequest& request) {
  const auto act = [this](const PanelAction& action) { perform(action, controllers_, nullptr); };
  using Action = AutomationRequest::Action;
  switch (request.action) {
    case Action::start: act(PanelAction::turnOnAwakeMode(request.duration)); return std::nullopt;
    case Action::toggle: act(PanelAction::toggleAwakeMode()); return std::nullopt;
    case Action::stop:
      // Deepwake first, as the main button does; a refused session's request
      // goes too.
      controllers_.lid->turnOff();
      controllers_.awake->turnOff();
      return std::nullopt;
    case Action::deepwake:
      if (request.on) return turnOnDeepwake();
      act(PanelAction::setDeepwake(false));
      return std::nullopt;
    case Action::hold: break;
  }
  if (!controllers_.binding) return "this app cannot bind a session to a process";
  const auto seconds = request.duration ? std::optional(request.duration->seconds) : std::nullopt;
  if (auto failure = controllers_.binding->hold(request.pid, seconds)) return failure;
  // The process is held whatever becomes of Deepwake: the user's work
  // matters more.
  if (!request.deepwake) return std::nullopt;
  if (auto refused = turnOnDeepwake(request.pid)) return "the session is held, but " + *refused;
  return std::nullopt;
}

std::optional<std::string> AutomationHandler::turnOnDeepwake(std::optional<pid_t> heldPid) {
  auto& lid = *controllers_.lid;
  if (lid.isWanted()) return std::nullopt;
  if (const auto& consent = controllers_.consent) {
    using Answer = DeepwakeAutomationConsent::Answer;
    // A profile may have changed since.
    consent->reload();
    switch (consent->answer()) {
      case Answer::allowed: break;
      case Answer::refused:
        if (consent->isForced()) return "your organization does not let scripts and Shortcuts turn on Deepwake";
        return "scripts and Shortcuts may not turn on Deepwake; that is a switch in Wakeloft's Safety settings";
      case Answer::notAsked:
        consent->request(whenAllowed(heldPid));
        showPanel_();
        return "Deepwake waits until scripts and Shortcuts are allowed to turn it on, in Wakeloft's panel";
    }
  }
  if (!lid.refusal()) perform(PanelAction::setDeepwake(true), controllers_, nullptr);
  // Paused for power is on as far as the user is concerned.
  if (lid.isWanted()) return std::nullopt;
  // The panel says why not: the heat warning, the helper's approval, a refusal.
  showPanel_();
  return whyDeepwakeIsOff(lid);
}

}  // namespace wakeloft
