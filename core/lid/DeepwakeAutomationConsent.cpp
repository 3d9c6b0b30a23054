#include "lid/DeepwakeAutomationConsent.h"

#include <utility>

#include "base/MainThread.h"

namespace wakeloft {

DeepwakeAutomationConsent::DeepwakeAutomationConsent(DefaultsDomain& defaults) : defaults_(defaults) { reload(); }

void DeepwakeAutomationConsent::reload() {
  const bool wasForced = isForced_;
  const Answer was = answer_;
  isForced_ = defaults_.isForced(key);
  answer_ = Answer::notAsked;
  if (const auto value = defaults_.object(key)) {
    if (const bool* allowed = value->get<bool>()) {
      answer_ = *allowed ? Answer::allowed : Answer::refused;
    } else if (isForced_) {
      // A profile's value cannot be cleaned; one that says nothing clear allows nothing.
      answer_ = Answer::refused;
    } else {
      // Asked again rather than guessed.
      defaults_.remove(key);
    }
  }
  // A profile that answers the question answers a request waiting for it.
  const auto waiting = answer_ == Answer::notAsked ? nullptr : std::exchange(waiting_, nullptr);
  if (answer_ != was || isForced_ != wasForced || waiting) changed_.notify();
  if (waiting && answer_ == Answer::allowed) waiting();
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
  if (isForced_) return;
  defaults_.set(key, allowed);
  const auto waiting = std::exchange(waiting_, nullptr);
  answer_ = allowed ? Answer::allowed : Answer::refused;
  changed_.notify();
  if (allowed && waiting) waiting();
}

}  // namespace wakeloft
