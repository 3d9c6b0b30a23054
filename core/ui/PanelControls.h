#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "ui/LocalizedText.h"
#include "ui/PanelAction.h"
#include "ui/TextCatalog.h"

namespace wakeloft {

// A button of the panel: its words, what it does, and what VoiceOver says
// when that should differ from the words.
struct PanelButton {
  LocalizedText title;
  PanelAction action;
  std::optional<LocalizedText> accessibilityLabel = std::nullopt;

  friend bool operator==(const PanelButton&, const PanelButton&) = default;
};

// A switch of the panel, bound to a controller's state; flipping it
// performs the action for its new position.
struct PanelSwitch {
  LocalizedText title;
  bool isOn = false;
  bool isEnabled = true;
  PanelAction whenTurnedOn;
  PanelAction whenTurnedOff;
  // What VoiceOver says after a pause on the switch, where its title alone
  // does not explain it.
  std::optional<LocalizedText> accessibilityHelp = std::nullopt;

  const PanelAction& action(bool turnedOn) const { return turnedOn ? whenTurnedOn : whenTurnedOff; }

  friend bool operator==(const PanelSwitch&, const PanelSwitch&) = default;
};

// The symbol in front of a footnote.
enum class NoteSymbol { information, error, heat };

// The system symbol's name.
constexpr std::string_view symbolName(NoteSymbol symbol) {
  switch (symbol) {
    case NoteSymbol::information: return "info.circle";
    case NoteSymbol::error: return "exclamationmark.triangle.fill";
    case NoteSymbol::heat: return "thermometer.high";
  }
  return "info.circle";
}

// A marked footnote: the symbol in a fixed-width box, then the text,
// wrapping, and sometimes a link-styled button under it.
struct PanelNote {
  NoteSymbol symbol;
  LocalizedText text;
  std::optional<PanelButton> link = std::nullopt;

  // What VoiceOver reads for the text: an error says it is one, since its
  // symbol, the only other sign, is not read.
  std::string spokenLabel(const TextLookup& lookup) const {
    if (symbol != NoteSymbol::error) return text.resolved(lookup);
    return LocalizedText(TextCatalog::spokenError, {text.resolved(lookup)}).resolved(lookup);
  }

  friend bool operator==(const PanelNote&, const PanelNote&) = default;
};

}  // namespace wakeloft
