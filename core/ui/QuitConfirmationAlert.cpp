#include "ui/QuitConfirmationAlert.h"

#include "session/AwakeDuration.h"
#include "ui/TextCatalog.h"

namespace wakeloft {

std::optional<QuitConfirmationAlert> QuitConfirmationAlert::make(const QuitConfirmation& confirmation,
                                                                 const std::string& locale,
                                                                 LayoutDirection layoutDirection) {
  std::optional<Wording> wording;
  switch (confirmation.kind()) {
    case QuitConfirmation::Kind::quitNow: return std::nullopt;
    case QuitConfirmation::Kind::awakeMode:
      wording = awakeMode(confirmation.remaining(), locale, confirmation.comesBack());
      break;
    case QuitConfirmation::Kind::deepwake:
      wording = deepwake(confirmation.remaining(), locale, confirmation.comesBack());
      break;
  }
  return QuitConfirmationAlert{
      wording->title,
      wording->message,
      {{wording->confirm, ""}, {TextCatalog::cancel, std::string(escapeKey)}},
      layoutDirection,
  };
}

QuitConfirmationAlert::Wording QuitConfirmationAlert::awakeMode(std::optional<double> remaining,
                                                                const std::string& locale, bool comesBack) {
  const auto consequence =
      comesBack ? TextCatalog::awakeModeQuitConsequence : TextCatalog::awakeModeQuitConsequenceForProcesses;
  return {TextCatalog::quitAndStopAwakeMode, sentences(remaining, locale, consequence), TextCatalog::quit};
}

QuitConfirmationAlert::Wording QuitConfirmationAlert::deepwake(std::optional<double> remaining,
                                                               const std::string& locale, bool comesBack) {
  const auto consequence =
      comesBack ? TextCatalog::deepwakeQuitConsequence : TextCatalog::deepwakeQuitConsequenceForProcesses;
  return {TextCatalog::quitAndEndDeepwakeQuestion, sentences(remaining, locale, consequence),
          TextCatalog::quitAndEndDeepwake};
}

LocalizedSentences QuitConfirmationAlert::sentences(std::optional<double> remaining, const std::string& locale,
                                                    LocalizedText consequence) {
  if (!remaining) return {{std::move(consequence)}};
  return {{LocalizedText(TextCatalog::leftInThisSession, {AwakeDuration{*remaining}.spokenLabel(locale)}),
           std::move(consequence)}};
}

}  // namespace wakeloft
