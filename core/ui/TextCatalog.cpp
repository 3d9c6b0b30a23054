#include "ui/TextCatalog.h"

#include <array>

namespace wakeloft {

std::span<const TextKey> TextCatalog::all() {
  static constexpr std::array keys{
      assertionRefused,
      lidHelperUnavailable,
      lidHelperRequiresApproval,
      settingUnreadable,
      settingUnwritten,
      settingNotPutBack,
      deadlineNotANumber,
      settingOnElsewhere,
      settingTurnedOffElsewhere,
      quitAndStopAwakeMode,
      awakeModeQuitConsequence,
      quit,
      cancel,
      leftInThisSession,
      quitAndEndDeepwakeQuestion,
      deepwakeQuitConsequence,
      quitAndEndDeepwake,
  };
  return keys;
}

}  // namespace wakeloft
