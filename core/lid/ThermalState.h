#pragma once

namespace wakeloft {

// How hot the machine runs, in the system's four steps.
enum class ThermalState { nominal, fair, serious, critical };

}  // namespace wakeloft
