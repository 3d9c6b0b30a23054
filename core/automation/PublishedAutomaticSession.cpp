#include "automation/PublishedAutomaticSession.h"

#include <cstdio>

#include "base/Utf8.h"

namespace wakeloft {

namespace {

using Rule = AutomaticRules::Rule;

std::string timeOfDay(int minutes) {
  char text[8];
  std::snprintf(text, sizeof text, "%02d:%02d", minutes / 60 % 24, minutes % 60);
  return text;
}

}  // namespace

PublishedAutomaticSession::PublishedAutomaticSession(std::shared_ptr<AwakeController> awake,
                                                     std::shared_ptr<AutomaticSessionController> automatic,
                                                     DefaultsDomain& defaults)
    : awake_(std::move(awake)), automatic_(std::move(automatic)), defaults_(defaults) {
  // Whatever the last run left is stale: publish from scratch.
  defaults_.remove(key);
  publish();
  // The subscriptions end with this object, so the raw pointer never dangles.
  awakeChanges_ = awake_->observe([this] { publish(); });
  automaticChanges_ = automatic_->observe([this] { publish(); });
}

std::optional<std::string> PublishedAutomaticSession::reason(const AwakeController& awake,
                                                             const AutomaticSessionController& automatic) {
  if (!awake.isOn() || !awake.isAutomatic()) return std::nullopt;
  if (automatic.graceEndsAt()) return "ending soon: the rules stopped holding";
  const auto& holding = automatic.holding();
  if (holding.empty()) return std::nullopt;
  std::string text;
  switch (holding.front()) {
    case Rule::externalDisplay: text = "while a display is connected"; break;
    case Rule::powerAdapter: text = "while on a power adapter"; break;
    case Rule::apps: {
      const auto app = AutomaticRules::runningApp(automatic.settings(), automatic.facts());
      text = "while " + (app ? app->name : std::string("an app")) + " is open";
      break;
    }
    case Rule::schedule: text = "until " + timeOfDay(automatic.settings().schedule.end); break;
  }
  if (holding.size() > 1) text += " and " + std::to_string(holding.size() - 1) + " more";
  return text;
}

std::optional<std::string> PublishedAutomaticSession::read(const DefaultsDomain& defaults) {
  const auto value = defaults.object(key);
  const auto* text = value ? value->get<std::string>() : nullptr;
  if (!text || text->empty() || text->size() > longestReason || !Utf8::isValid(*text)) return std::nullopt;
  for (const unsigned char byte : *text) {
    if (byte < 0x20 || byte == 0x7F) return std::nullopt;
  }
  return *text;
}

void PublishedAutomaticSession::publish() {
  auto now = reason(*awake_, *automatic_);
  if (now == published_) return;
  published_ = std::move(now);
  if (published_) {
    defaults_.set(key, *published_);
  } else {
    defaults_.remove(key);
  }
}

}  // namespace wakeloft
