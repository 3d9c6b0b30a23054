#include "helper/CodeSigningText.h"

#include <algorithm>

#include "base/Utf8.h"

namespace wakeloft::CodeSigningText {

std::string hex(std::span<const std::uint8_t> bytes) {
  static constexpr char digits[] = "0123456789abcdef";
  std::string text;
  text.reserve(bytes.size() * 2);
  for (const auto byte : bytes) {
    text += digits[byte >> 4];
    text += digits[byte & 0x0F];
  }
  return text;
}

std::optional<std::string> teamIdentifier(std::span<const std::uint8_t> buffer) {
  if (buffer.size() <= teamIdentifierHeaderSize) return std::nullopt;
  const auto identifier = buffer.subspan(teamIdentifierHeaderSize);
  const auto end = std::find(identifier.begin(), identifier.end(), std::uint8_t{0});
  const auto length = static_cast<std::size_t>(end - identifier.begin());
  if (length == 0) return std::nullopt;
  return Utf8::repaired(identifier.first(length));
}

std::optional<std::string> codeDirectoryHash(std::span<const std::uint8_t> buffer) {
  if (buffer.size() != codeDirectoryHashSize) return std::nullopt;
  return hex(buffer);
}

}  // namespace wakeloft::CodeSigningText
