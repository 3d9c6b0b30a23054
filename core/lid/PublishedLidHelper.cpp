#include "lid/PublishedLidHelper.h"

#include <array>
#include <utility>

namespace wakeloft {

namespace {

constexpr std::array<std::pair<LidHelperStatus, const char*>, 4> names{{
    {LidHelperStatus::enabled, "enabled"},
    {LidHelperStatus::requiresApproval, "requiresApproval"},
    {LidHelperStatus::notRegistered, "notRegistered"},
    {LidHelperStatus::notFound, "notFound"},
}};

const char* nameOf(LidHelperStatus status) {
  for (const auto& [value, name] : names) {
    if (value == status) return name;
  }
  return "notRegistered";
}

}  // namespace

PublishedLidHelper::PublishedLidHelper(std::shared_ptr<LidAwakeController> lid,
                                       std::shared_ptr<const LidHelperRegistration> registration,
                                       std::optional<std::string> version, DefaultsDomain& defaults)
    : lid_(std::move(lid)), registration_(std::move(registration)), version_(std::move(version)), defaults_(defaults) {
  update();
  // The subscription ends with this object, so the raw pointer never dangles.
  changes_ = lid_->observe([this] { update(); });
}

void PublishedLidHelper::update() { publish(defaults_, registration_->status(), version_); }

void PublishedLidHelper::publish(DefaultsDomain& defaults, LidHelperStatus status, const std::optional<std::string>& version) {
  const DefaultsValue name = std::string(nameOf(status));
  if (defaults.object(statusKey) != name) defaults.set(statusKey, name);
  if (!version) {
    if (defaults.object(versionKey)) defaults.remove(versionKey);
  } else if (defaults.object(versionKey) != DefaultsValue(*version)) {
    defaults.set(versionKey, *version);
  }
}

PublishedLidHelper::Published PublishedLidHelper::read(const DefaultsDomain& defaults) {
  Published published;
  if (const auto value = defaults.object(statusKey)) {
    const auto* text = value->get<std::string>();
    for (const auto& [status, name] : names) {
      if (text && *text == name) published.status = status;
    }
    if (!published.status) published.unreadableKeys.emplace_back(statusKey);
  }
  if (const auto value = defaults.object(versionKey)) {
    const auto* text = value->get<std::string>();
    if (text && !text->empty() && text->size() <= longestVersion) {
      published.version = *text;
    } else {
      published.unreadableKeys.emplace_back(versionKey);
    }
  }
  return published;
}

}  // namespace wakeloft
