#pragma once

#include <string>

#include "doctor/DoctorFacts.h"

namespace wakeloft {

// What `wakeloft doctor` reads of the lease rig on Linux: its file, read the
// way the rig helper reads it, and the helper's answer to a status request
// on its socket. The machine and power assertions are not read: the rig has
// neither. Blocks for at most `timeout` seconds waiting for the answer.
namespace RigDoctorFacts {

inline constexpr const char* defaultSocketPath = "/tmp/wakeloft-lid-rig.sock";

DoctorFacts read(const std::string& socketPath, const std::string& rigFilePath, double timeout);

}  // namespace RigDoctorFacts
}  // namespace wakeloft
