#pragma once

#include <functional>

#include "base/DefaultsDomain.h"
#include "base/Observation.h"

namespace wakeloft {

// Whether scripts and Shortcuts may turn Deepwake on. An address or the
// command is anything on the Mac, or a web page after one browser prompt, so
// the first such request asks in the panel; the question stays until it is
// answered, and allowing carries out the request that asked. The answer is
// kept as a boolean in the defaults, read strictly, and is a switch in the
// Safety popover. Turning Deepwake off never asks. A configuration profile
// may force the answer; then nothing asks and the user cannot change it.
// Main thread only.
class DeepwakeAutomationConsent {
 public:
  static constexpr const char* key = "com.wakeloft.automationMayTurnOnDeepwake";
  enum class Answer { notAsked, allowed, refused };

  // Keeps `defaults` by reference: it must outlive this.
  explicit DeepwakeAutomationConsent(DefaultsDomain& defaults);

  Answer answer() const { return answer_; }
  bool isForced() const { return isForced_; }
  // A request waits for the question's answer.
  bool isAsking() const { return static_cast<bool>(waiting_); }

  // A script or Shortcut wants Deepwake on: `turnOn` runs now when allowed,
  // waits for the answer when the question was never answered (a later
  // request replaces an earlier one), and is dropped when refused.
  void request(std::function<void()> turnOn);
  // The panel's question, or the Safety popover's switch. Allowing carries
  // out a waiting request; refusing drops it.
  void answer(bool allowed);
  // Reads the answer again, for a profile that arrived or changed.
  void reload();

  [[nodiscard]] Subscription observe(std::function<void()> handler) { return changed_.observe(std::move(handler)); }

 private:
  DefaultsDomain& defaults_;
  ChangeSignal changed_;
  Answer answer_ = Answer::notAsked;
  bool isForced_ = false;
  std::function<void()> waiting_;
};

}  // namespace wakeloft
