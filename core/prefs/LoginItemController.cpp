#include "prefs/LoginItemController.h"

namespace wakeloft {

LoginItemController::LoginItemController(std::shared_ptr<LoginItem> item, bool repairingRegistration)
    : item_(std::move(item)), state_(changed_, item_->state()) {
  if (repairingRegistration && state() == LoginItemState::enabled && item_->isAtStableLocation()) {
    attempt(&LoginItem::registerItem);
    state_.set(item_->state());
  }
}

void LoginItemController::attempt(void (LoginItem::*call)()) {
  try {
    (item_.get()->*call)();
    lastFailure_.set(std::nullopt);
  } catch (...) {
    lastFailure_.set(AwakeFailure::from(std::current_exception()));
  }
}

void LoginItemController::refresh() {
  const auto current = item_->state();
  if (current == state()) return;
  state_.set(current);
  lastFailure_.set(std::nullopt);
}

void LoginItemController::setEnabled(bool on) {
  attempt(on ? &LoginItem::registerItem : &LoginItem::unregisterItem);
  state_.set(item_->state());
}

void LoginItemController::toggle() { setEnabled(state() == LoginItemState::disabled); }

}  // namespace wakeloft
