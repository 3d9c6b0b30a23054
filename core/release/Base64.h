#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace wakeloft {

// Standard base64 (RFC 4648, "+" and "/", padded), the form Sparkle writes
// keys and signatures in.
namespace Base64 {

std::string encode(std::string_view bytes);

// The bytes `text` encodes, or absent for anything but canonical padded
// base64: no whitespace, no other characters, no stray bits.
std::optional<std::vector<unsigned char>> decode(std::string_view text);

}  // namespace Base64
}  // namespace wakeloft
