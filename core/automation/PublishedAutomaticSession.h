#pragma once

#include <memory>
#include <optional>
#include <string>

#include "automatic/AutomaticSessionController.h"
#include "base/DefaultsDomain.h"
#include "base/Observation.h"
#include "session/AwakeController.h"

namespace wakeloft {

// Why an automatic session runs, in the app's defaults for the command to
// read: it is never stored as the user's intent, so nothing else tells it.
// Mirrors the controllers while the app runs and is removed when no
// automatic session does; the command believes it only while the app runs.
// Main thread only.
class PublishedAutomaticSession {
 public:
  static constexpr const char* key = "com.wakeloft.automaticSessionReason";
  // Longer than any reason this writes, with an app's name at its longest.
  static constexpr std::size_t longestReason = 2 * AutomaticRules::Settings::longestText;

  // `defaults` must outlive this.
  PublishedAutomaticSession(std::shared_ptr<AwakeController> awake,
                            std::shared_ptr<AutomaticSessionController> automatic, DefaultsDomain& defaults);

  // The English words for why the automatic session runs ("while a display
  // is connected", "while Xcode is open and 1 more", "until 18:00"); absent
  // while none runs.
  static std::optional<std::string> reason(const AwakeController& awake, const AutomaticSessionController& automatic);
  // The published reason; absent when there is none, or when it is not one
  // line of UTF-8 text of at most `longestReason` bytes.
  static std::optional<std::string> read(const DefaultsDomain& defaults);

 private:
  void publish();

  std::shared_ptr<AwakeController> awake_;
  std::shared_ptr<AutomaticSessionController> automatic_;
  DefaultsDomain& defaults_;
  std::optional<std::string> published_;
  Subscription awakeChanges_;
  Subscription automaticChanges_;
};

}  // namespace wakeloft
