#include "lid/LidClosePrecaution.h"

namespace wakeloft {

LidClosePrecaution LidClosePrecaution::shown(bool isOn, bool hasAcknowledged,
                                             const MachineConditionsSnapshot& conditions) {
  if (isOn && hasAcknowledged) return conditions.hasNoHeatPath() ? noHeatPath : none;
  return hasAcknowledged ? none : beforeFirstUse;
}

}  // namespace wakeloft
