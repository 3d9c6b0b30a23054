#pragma once

#include <optional>
#include <string_view>

namespace wakeloft {

// Plain decimal numbers read from outside bytes, the same way on every
// platform and in every locale: an optional sign, digits with an optional
// fraction (at least one digit in all), and an optional exponent. Nothing
// else: no blanks, no hexadecimal, no "inf" or "nan".
namespace DecimalNumber {

// The value of `text`, or nothing when it is not such a number. A magnitude
// too large for a double reads as the infinity of its sign; one too small to
// represent reads as zero of its sign (or the nearest subnormal).
std::optional<double> read(std::string_view text);

}  // namespace DecimalNumber
}  // namespace wakeloft
