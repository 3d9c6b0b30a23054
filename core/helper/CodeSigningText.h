#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace wakeloft {

// The texts that the code-signing queries (`CodeSigningIdentity`, macOS)
// make from the system's raw answers. Kept apart so the rules can be tested
// anywhere.
namespace CodeSigningText {

// The kernel's csops operations, and the buffers they fill.
inline constexpr unsigned teamIdentifierOperation = 14;
inline constexpr std::size_t teamIdentifierBufferSize = 72;
// The team identifier follows a header of this many bytes.
inline constexpr std::size_t teamIdentifierHeaderSize = 8;
inline constexpr unsigned codeDirectoryHashOperation = 5;
inline constexpr std::size_t codeDirectoryHashSize = 20;

// Lower-case hexadecimal, two digits a byte, no separator.
std::string hex(std::span<const std::uint8_t> bytes);

// The identifier in a filled team-identifier buffer: after the header, up to
// a zero byte or the buffer's end, UTF-8 with bad sequences repaired.
// Absent when it is empty.
std::optional<std::string> teamIdentifier(std::span<const std::uint8_t> buffer);

// A filled code-directory-hash buffer as 40 hexadecimal digits; absent when
// it is not exactly the size the kernel fills.
std::optional<std::string> codeDirectoryHash(std::span<const std::uint8_t> buffer);

}  // namespace CodeSigningText
}  // namespace wakeloft
