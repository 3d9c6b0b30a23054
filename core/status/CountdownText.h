#pragma once

#include <string>

namespace wakeloft {

// The countdown beside "On" in the panel.
namespace CountdownText {

// Whole seconds, rounded down so the display never shows more time than is
// left: "59:59" under an hour, "1:00:00" from an hour up, in the locale's
// positional pattern. Time that is not a positive number shows as zero.
std::string formatted(double remaining, const std::string& locale);

}  // namespace CountdownText
}  // namespace wakeloft
