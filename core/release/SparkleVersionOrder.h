#pragma once

#include <compare>
#include <string_view>

namespace wakeloft {

// How Sparkle's standard version comparator (SUStandardVersionComparator,
// Sparkle 2) orders build versions, the sparkle:version of an appcast item
// against an app's CFBundleVersion. A version splits into runs of digits,
// runs of letters and single separators, and everything from a "-" after
// the first character on is ignored ("1.5.5-335d3e2" is "1.5.5"). The
// leading numbers are padded with ".0" to the same count ("1.0" is
// "1.0.0"); then parts compare in turn: numbers by value, letters as text,
// any separator equals any other; a letter part ranks below anything else
// ("1.0b1" < "1.0" < "1.0.1"), a number above a separator.
//
// Defined for printable ASCII, where the character classes match
// Foundation's; other bytes count as letters.
namespace SparkleVersionOrder {

std::strong_ordering compare(std::string_view a, std::string_view b);

}  // namespace SparkleVersionOrder
}  // namespace wakeloft
