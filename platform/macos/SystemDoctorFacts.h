#pragma once

#include <optional>
#include <string>

#include "doctor/DoctorFacts.h"

namespace wakeloft {

// What `wakeloft doctor` reads of this Mac beyond the app's defaults: the
// app's copy and version, the helper's answer, "disablesleep" as the helper
// reads it, the assertion holders, the machine and the lid. Translates only;
// the report judges. Waits at most `helperTimeout` seconds for the helper.
namespace SystemDoctorFacts {

DoctorFacts read(const std::optional<std::string>& appPath, double helperTimeout);

}  // namespace SystemDoctorFacts
}  // namespace wakeloft
