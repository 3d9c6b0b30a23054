#include "lease/LidHelperRefusal.h"

namespace wakeloft {

LidHelperRefusal LidHelperRefusal::fromReason(std::string_view reason) {
  if (reason == deadlineNotANumberText) return deadlineNotANumber();
  if (reason == settingOnElsewhereText) return settingOnElsewhere();
  if (reason == settingTurnedOffElsewhereText) return settingTurnedOffElsewhere();
  // Byte-wise prefixes: the rest, possibly empty, is the detail.
  if (reason.starts_with(unreadablePrefix)) return settingUnreadable(std::string(reason.substr(unreadablePrefix.size())));
  if (reason.starts_with(unwrittenPrefix)) return settingUnwritten(std::string(reason.substr(unwrittenPrefix.size())));
  if (reason.starts_with(notPutBackPrefix)) return settingNotPutBack(std::string(reason.substr(notPutBackPrefix.size())));
  return unrecognized(std::string(reason));
}

std::string LidHelperRefusal::reason() const {
  switch (kind_) {
    case Kind::settingUnreadable: return std::string(unreadablePrefix) + detail_;
    case Kind::settingUnwritten: return std::string(unwrittenPrefix) + detail_;
    case Kind::settingNotPutBack: return std::string(notPutBackPrefix) + detail_;
    case Kind::unrecognized: return detail_;
    case Kind::deadlineNotANumber: return std::string(deadlineNotANumberText);
    case Kind::settingOnElsewhere: return std::string(settingOnElsewhereText);
    case Kind::settingTurnedOffElsewhere: return std::string(settingTurnedOffElsewhereText);
  }
  return detail_;
}

}  // namespace wakeloft
