#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace wakeloft {

// UTF-8 as the platform's strings read it: well-formed sequences only (no
// overlong forms, no surrogates, nothing above U+10FFFF).
namespace Utf8 {

// One scalar read from the front of some bytes. When the bytes there are not
// well formed, `valid` is false, `value` is U+FFFD and `length` covers the
// longest start of a sequence that could have been valid (at least one byte),
// the unit that gets one replacement character.
struct Scalar {
  char32_t value = 0;
  std::size_t length = 0;
  bool valid = false;
};

namespace detail {
inline constexpr char32_t replacement = 0xFFFD;
inline bool isContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }
}  // namespace detail

// The scalar at the front of `bytes`, which must not be empty.
inline Scalar front(std::string_view bytes) {
  const auto lead = static_cast<unsigned char>(bytes[0]);
  if (lead < 0x80) return {lead, 1, true};

  std::size_t length = 0;
  char32_t value = 0;
  // The second byte's range narrows for some leads: that is what rules out
  // overlong forms, surrogates and scalars above U+10FFFF.
  unsigned char secondLow = 0x80, secondHigh = 0xBF;
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2, value = lead & 0x1F;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3, value = lead & 0x0F;
    if (lead == 0xE0) secondLow = 0xA0;
    if (lead == 0xED) secondHigh = 0x9F;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4, value = lead & 0x07;
    if (lead == 0xF0) secondLow = 0x90;
    if (lead == 0xF4) secondHigh = 0x8F;
  } else {
    return {detail::replacement, 1, false};
  }

  for (std::size_t i = 1; i < length; ++i) {
    if (i >= bytes.size()) return {detail::replacement, i, false};
    const auto byte = static_cast<unsigned char>(bytes[i]);
    const bool fits = i == 1 ? (byte >= secondLow && byte <= secondHigh) : detail::isContinuation(byte);
    if (!fits) return {detail::replacement, i, false};
    value = (value << 6) | (byte & 0x3F);
  }
  return {value, length, true};
}

inline bool isValid(std::string_view bytes) {
  while (!bytes.empty()) {
    const auto scalar = front(bytes);
    if (!scalar.valid) return false;
    bytes.remove_prefix(scalar.length);
  }
  return true;
}

// The bytes with each ill-formed part replaced by U+FFFD.
inline std::string repaired(std::span<const std::uint8_t> bytes) {
  std::string_view rest(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  std::string result;
  result.reserve(rest.size());
  while (!rest.empty()) {
    const auto scalar = front(rest);
    if (scalar.valid) {
      result.append(rest.substr(0, scalar.length));
    } else {
      result.append("\xEF\xBF\xBD");
    }
    rest.remove_prefix(scalar.length);
  }
  return result;
}

}  // namespace Utf8
}  // namespace wakeloft
