// The one reader of decimal numbers from outside bytes, checked against the
// standard library's own correctly rounded reader on the texts both take,
// and against its own shortest writing.

#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

#include "FuzzCheck.h"
#include "base/DecimalNumber.h"

using namespace wakeloft;
using fuzz::require;

namespace {

bool sameBits(double a, double b) { return a == b && std::signbit(a) == std::signbit(b); }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto value = DecimalNumber::read(text);
  const bool plainCharacters = text.find_first_not_of("0123456789+-.eE") == std::string_view::npos;
  if (value) require(plainCharacters && !text.empty(), "only signs, digits, a point and an exponent make a number");

  // from_chars takes no leading plus; otherwise its grammar is ours, plus
  // "inf" and "nan", which the character check above leaves out.
  std::string_view unsigned_ = text;
  if (unsigned_.starts_with('+') && !unsigned_.substr(1).starts_with('-') && !unsigned_.substr(1).starts_with('+')) {
    unsigned_.remove_prefix(1);
  }
  double reference = 0;
  const auto [end, error] = std::from_chars(unsigned_.data(), unsigned_.data() + unsigned_.size(), reference);
  const bool takenWhole = end == unsigned_.data() + unsigned_.size() && !unsigned_.empty();
  if (plainCharacters && takenWhole && error == std::errc()) {
    require(value && sameBits(*value, reference), "a number reads as the correctly rounded double");
  }
  if (plainCharacters && takenWhole && error == std::errc::result_out_of_range) {
    require(value && (std::isinf(*value) || std::fabs(*value) <= 0x1p-1022), "out of range reads as infinity or next to zero");
    require(value && std::signbit(*value) == text.starts_with('-'), "out of range keeps its sign");
  }
  if (value && !(takenWhole && (error == std::errc() || error == std::errc::result_out_of_range))) {
    require(false, "every number read is one the standard reader also takes whole");
  }

  if (value && std::isfinite(*value)) {
    char digits[64];
    const auto written = std::to_chars(digits, digits + sizeof digits, *value);
    const auto back = DecimalNumber::read(std::string_view(digits, written.ptr));
    require(back && sameBits(*back, *value), "the shortest writing of a number reads back to it");
  }
  return 0;
}
