#include "automation/PublishedDeepwake.h"

namespace wakeloft {

PublishedDeepwake::PublishedDeepwake(std::shared_ptr<LidAwakeController> lid, DefaultsDomain& defaults)
    : lid_(std::move(lid)), defaults_(defaults) {
  published_ = lid_->isOn();
  defaults_.set(key, published_);
  // The subscription ends with this object, so the raw pointer never dangles.
  changes_ = lid_->observe([this] { publish(); });
}

bool PublishedDeepwake::read(const DefaultsDomain& defaults) {
  const auto value = defaults.object(key);
  const auto* on = value ? value->get<bool>() : nullptr;
  return on && *on;
}

void PublishedDeepwake::publish() {
  if (lid_->isOn() == published_) return;
  published_ = lid_->isOn();
  defaults_.set(key, published_);
}

}  // namespace wakeloft
