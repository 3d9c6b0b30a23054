#pragma once

#include <functional>
#include <optional>

#include "session/AwakeDuration.h"
#include "ui/Controllers.h"

namespace wakeloft {

// What a control of the awake panel does, as a value: the views keep it and
// hand it to `perform` when the user acts.
class PanelAction {
 public:
  enum class Operation {
    // The main button: off when on (Deepwake first), otherwise on without timer.
    toggleAwakeMode,
    // A preset (with its duration) or "Stay awake without a timer" (without).
    turnOnAwakeMode,
    // The Deepwake switch, with its new position.
    setDeepwake,
    acknowledgeHeatWarning,
    // "Don't retry when Wakeloft opens": forget the session that was asked for.
    stopRetrying,
    // The login switch, with its new position.
    setOpenAtLogin,
    // "Keep the Screen On", with its new position.
    setKeepScreenOn,
    openLoginItemsSettings,
    // The answer to "Allow scripts and Shortcuts to turn on Deepwake?".
    answerDeepwakeAutomation,
    // Where a translocated copy is told to move the app to.
    revealApplicationsFolder,
    // The panel was opened: bring every controller up to date.
    refreshOnOpen,
    // "Resume" beside the note that automatic sessions are paused.
    resumeAutomaticSessions,
  };

  static PanelAction toggleAwakeMode() { return PanelAction(Operation::toggleAwakeMode); }
  static PanelAction turnOnAwakeMode(std::optional<AwakeDuration> duration) {
    PanelAction action(Operation::turnOnAwakeMode);
    action.duration_ = duration;
    return action;
  }
  static PanelAction setDeepwake(bool on) { return switchedTo(Operation::setDeepwake, on); }
  static PanelAction acknowledgeHeatWarning() { return PanelAction(Operation::acknowledgeHeatWarning); }
  static PanelAction stopRetrying() { return PanelAction(Operation::stopRetrying); }
  static PanelAction setOpenAtLogin(bool on) { return switchedTo(Operation::setOpenAtLogin, on); }
  static PanelAction setKeepScreenOn(bool on) { return switchedTo(Operation::setKeepScreenOn, on); }
  static PanelAction openLoginItemsSettings() { return PanelAction(Operation::openLoginItemsSettings); }
  static PanelAction answerDeepwakeAutomation(bool allowed) {
    return switchedTo(Operation::answerDeepwakeAutomation, allowed);
  }
  static PanelAction revealApplicationsFolder() { return PanelAction(Operation::revealApplicationsFolder); }
  static PanelAction refreshOnOpen() { return PanelAction(Operation::refreshOnOpen); }
  static PanelAction resumeAutomaticSessions() { return PanelAction(Operation::resumeAutomaticSessions); }

  Operation operation() const { return operation_; }
  // The session length of `turnOnAwakeMode`; nothing means no timer.
  const std::optional<AwakeDuration>& duration() const { return duration_; }
  // The new position of a switch; whether automation is allowed.
  bool isOn() const { return isOn_; }

  friend bool operator==(const PanelAction&, const PanelAction&) = default;

 private:
  explicit PanelAction(Operation operation) : operation_(operation) {}
  static PanelAction switchedTo(Operation operation, bool on) {
    PanelAction action(operation);
    action.isOn_ = on;
    return action;
  }

  Operation operation_;
  std::optional<AwakeDuration> duration_;
  bool isOn_ = false;
};

// Carries an action out on the controllers. Opening the system's login-item
// settings and the Applications folder are what no controller does; the app
// passes those calls in.
void perform(const PanelAction& action, const Controllers& controllers,
             const std::function<void()>& openLoginItemsSettings,
             const std::function<void()>& revealApplicationsFolder = nullptr);

}  // namespace wakeloft
