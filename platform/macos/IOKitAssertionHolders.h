#pragma once

#include <optional>
#include <vector>

#include "base/ProcessTable.h"
#include "doctor/AssertionHolder.h"

namespace wakeloft {

// The processes holding power assertions that keep the Mac awake, from the
// power manager's listing by process, each named through `processes` (the
// listing carries no name). Absent when the listing cannot be had.
namespace IOKitAssertionHolders {

std::optional<std::vector<AssertionHolder>> read(const ProcessTable& processes);

}  // namespace IOKitAssertionHolders
}  // namespace wakeloft
