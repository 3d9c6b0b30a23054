#include "lid/DeepwakeAutomationConsent.h"

#include <utility>

#include "base/MainThread.h"

namespace wakeloft {

DeepwakeAutomationConsent::DeepwakeAutomationConsent(DefaultsDomain& defaults) : defaults_(defaults) {
  const auto value = defaults_.object(key);
  if (!value) return;
  if (const bool* allowed = value->get<bool>()) {
    answer_ = *allowed ? Answer::allowed : Answer::refused;
  } else {
    // Asked again rather than guessed.
    defaults_.remove(key);
  }
}

void DeepwakeAutomationConsent::request(std::function<void()> turnOn) {
  requireMainThread("DeepwakeAutomationConsent::request");
  switch (answer_) {
    case Answer::allowed: turnOn(); return;
    case Answer::refused: return;
    case Answer::notAsked: break;
  }
  const bool wasAsking = isAsking();
  waiting_ = std::move(turnOn);
  if (!wasAsking) changed_.notify();
}

void DeepwakeAutomationConsent::answer(bool allowed) {
  requireMainThread("DeepwakeAutomationConsent::answer");
  defaults_.set(key, allowed);
  const auto waiting = std::exchange(waiting_, nullptr);
  answer_ = allowed ? Answer::allowed : Answer::refused;
  changed_.notify();
  if (allowed && waiting) waiting();
}

}  // namespace wakeloft
