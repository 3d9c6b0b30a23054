#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "base/Observation.h"
#include "prefs/LoginItem.h"
#include "session/AwakeFailure.h"

namespace wakeloft {

// The open-at-login switch. Keeps no switch of its own: after every change
// it reads the system's state again, which may differ from what was asked
// (a registration can end up waiting for approval). Main thread only; calls
// into the system are synchronous.
class LoginItemController {
 public:
  // With `repairingRegistration`, an enabled item at a stable location is
  // registered again, so the system points at this copy of the app after a
  // move or an update.
  LoginItemController(std::shared_ptr<LoginItem> item, bool repairingRegistration);
  LoginItemController(const LoginItemController&) = delete;
  LoginItemController& operator=(const LoginItemController&) = delete;

  // Reads the system's state again; a change there makes an earlier failure
  // moot, so it is cleared.
  void refresh();
  void setEnabled(bool on);
  // Switches on only from disabled: an item waiting for approval is switched
  // off.
  void toggle();

  [[nodiscard]] Subscription observe(std::function<void()> handler) { return changed_.observe(std::move(handler)); }

  LoginItemState state() const { return state_; }
  // Why the last change failed.
  const std::optional<AwakeFailure>& lastFailure() const { return lastFailure_; }
  bool isEnabled() const { return state() == LoginItemState::enabled; }
  bool isRegistered() const { return state() != LoginItemState::disabled; }
  bool needsApproval() const { return state() == LoginItemState::requiresApproval; }
  // Asked of the item each time: the app may have been moved meanwhile.
  bool isAtStableLocation() const { return item_->isAtStableLocation(); }
  LoginItem& item() const { return *item_; }

 private:
  // Runs a call into the system and records how it went.
  void attempt(void (LoginItem::*call)());

  std::shared_ptr<LoginItem> item_;
  ChangeSignal changed_;
  Published<LoginItemState> state_;
  Published<std::optional<AwakeFailure>> lastFailure_{changed_, std::nullopt};
};

}  // namespace wakeloft
