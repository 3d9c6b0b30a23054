#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "glyph/LayoutDirection.h"
#include "status/QuitConfirmation.h"
#include "ui/LocalizedSentences.h"
#include "ui/LocalizedText.h"

namespace wakeloft {

// The question asked before quitting while a session or Deepwake runs, as
// the macOS side builds its informational alert from it: title as the
// message text, the sentences as the informative text, the buttons in
// order.
struct QuitConfirmationAlert {
  struct Button {
    LocalizedText title;
    // Empty leaves the alert's own choice: the first button answers Return.
    std::string keyEquivalent;

    friend bool operator==(const Button&, const Button&) = default;
  };

  // The words of one question.
  struct Wording {
    LocalizedText title;
    LocalizedSentences message;
    LocalizedText confirm;

    friend bool operator==(const Wording&, const Wording&) = default;
  };

  // Given to Cancel, so Escape backs out.
  static constexpr std::string_view escapeKey = "\x1b";

  LocalizedText title;
  LocalizedSentences message;
  // The confirm button, then "Cancel".
  std::vector<Button> buttons;
  LayoutDirection layoutDirection = LayoutDirection::leftToRight;

  // Nothing for `quitNow`: there is nothing to ask. Durations are put into
  // full words for `locale`, the app's resolved one: VoiceOver reads the
  // alert whole.
  static std::optional<QuitConfirmationAlert> make(const QuitConfirmation& confirmation, const std::string& locale,
                                                   LayoutDirection layoutDirection);

  static Wording awakeMode(std::optional<double> remaining, const std::string& locale, bool comesBack);
  static Wording deepwake(std::optional<double> remaining, const std::string& locale, bool comesBack);
  // The time left, when there is any, before the consequence.
  static LocalizedSentences sentences(std::optional<double> remaining, const std::string& locale,
                                      LocalizedText consequence);

  // Whether the answer was yes, from the index of the button chosen.
  static bool isConfirmed(std::size_t chosenButton) { return chosenButton == 0; }

  friend bool operator==(const QuitConfirmationAlert&, const QuitConfirmationAlert&) = default;
};

}  // namespace wakeloft
