#include "release/Base64.h"

#include <cstdint>

namespace wakeloft::Base64 {

namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

int valueOf(char c) {
  const auto at = alphabet.find(c);
  return at == std::string_view::npos ? -1 : static_cast<int>(at);
}

}  // namespace

std::string encode(std::string_view bytes) {
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
    std::uint32_t group = 0;
    for (std::size_t j = 0; j < 3; ++j) {
      group = group << 8 | (j < count ? static_cast<unsigned char>(bytes[i + j]) : 0u);
    }
    for (std::size_t j = 0; j < 4; ++j) {
      text += j <= count ? alphabet[group >> (18 - 6 * j) & 63] : '=';
    }
  }
  return text;
}

std::optional<std::vector<unsigned char>> decode(std::string_view text) {
  if (text.size() % 4 != 0) return std::nullopt;
  std::vector<unsigned char> bytes;
  bytes.reserve(text.size() / 4 * 3);
  for (std::size_t i = 0; i < text.size(); i += 4) {
    const bool last = i + 4 == text.size();
    const std::size_t padding = last ? (text[i + 3] == '=') + (text[i + 2] == '=' && text[i + 3] == '=') : 0;
    std::uint32_t group = 0;
    for (std::size_t j = 0; j < 4; ++j) {
      const int value = j < 4 - padding ? valueOf(text[i + j]) : 0;
      if (value < 0) return std::nullopt;
      group = group << 6 | static_cast<std::uint32_t>(value);
    }
    // The bits that padding leaves over must be zero, so each byte string
    // has exactly one encoding.
    if ((padding == 1 && (group & 0xFF) != 0) || (padding == 2 && (group & 0xFFFF) != 0)) return std::nullopt;
    for (std::size_t j = 0; j < 3 - padding; ++j) bytes.push_back(static_cast<unsigned char>(group >> (16 - 8 * j)));
  }
  return bytes;
}

}  // namespace wakeloft::Base64
