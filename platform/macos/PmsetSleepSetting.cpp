#include "PmsetSleepSetting.h"

#include "base/ChildProcess.h"
#include "helper/PmsetCommand.h"

namespace wakeloft {

void PmsetSleepSetting::writeDisabled(bool disabled) { PmsetCommand::write(disabled, &ChildProcess::run); }

bool PmsetSleepSetting::readDisabled() { return PmsetCommand::read(&ChildProcess::run); }

}  // namespace wakeloft
