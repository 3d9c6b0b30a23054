#include "base/DecimalNumber.h"

#include <locale.h>
#include <stdlib.h>

#if __has_include(<xlocale.h>)
#include <xlocale.h>
#endif

#include <string>

namespace wakeloft::DecimalNumber {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isPlainDecimal(std::string_view text) {
  std::size_t i = 0;
  const auto skipDigits = [&] {
    std::size_t count = 0;
    while (i < text.size() && isDigit(text[i])) ++i, ++count;
    return count;
  };
  if (i < text.size() && (text[i] == '-' || text[i] == '+')) ++i;
  std::size_t digits = skipDigits();
  if (i < text.size() && text[i] == '.') {
    ++i;
    digits += skipDigits();
  }
  if (digits == 0) return false;
  if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
    ++i;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) ++i;
    if (skipDigits() == 0) return false;
  }
  return i == text.size();
}

// strtod's grammar is a superset of the one above, and "C" keeps '.' the
// decimal point whatever the process locale says. Apple's libc++ for macOS 14
// has no floating-point from_chars, so this is the one reader everywhere.
locale_t cLocale() {
  static const locale_t locale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
  return locale;
}

}  // namespace

std::optional<double> read(std::string_view text) {
  if (!isPlainDecimal(text)) return std::nullopt;
  const auto locale = cLocale();
  if (locale == static_cast<locale_t>(nullptr)) return std::nullopt;
  const std::string terminated(text);
  char* end = nullptr;
  // Out of range needs no check of errno: strtod already gives the infinity
  // an overflow rounds to and the zero or subnormal an underflow rounds to.
  const double value = strtod_l(terminated.c_str(), &end, locale);
  if (end != terminated.c_str() + terminated.size()) return std::nullopt;
  return value;
}

}  // namespace wakeloft::DecimalNumber
