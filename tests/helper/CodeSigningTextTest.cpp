#include "helper/CodeSigningText.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>
#include <vector>

#include "base/Utf8.h"

namespace wakeloft {
namespace {

std::vector<std::uint8_t> teamBuffer(std::string_view identifier) {
  std::vector<std::uint8_t> buffer(CodeSigningText::teamIdentifierBufferSize, 0);
  // The header is the kernel's; its content does not matter.
  std::memset(buffer.data(), 0xAB, CodeSigningText::teamIdentifierHeaderSize);
  std::memcpy(buffer.data() + CodeSigningText::teamIdentifierHeaderSize, identifier.data(),
              std::min(identifier.size(), buffer.size() - CodeSigningText::teamIdentifierHeaderSize));
  return buffer;
}

TEST(CodeSigningTextTest, TeamIdentifierEndsAtZeroOrAtTheBuffersEnd) {
  EXPECT_EQ(CodeSigningText::teamIdentifier(teamBuffer("ABCDE12345")), "ABCDE12345");
  const std::string filling(64, 'Q');
  EXPECT_EQ(CodeSigningText::teamIdentifier(teamBuffer(filling)), filling);
  EXPECT_EQ(CodeSigningText::teamIdentifier(teamBuffer("")), std::nullopt);
  EXPECT_EQ(CodeSigningText::teamIdentifier(std::vector<std::uint8_t>(8, 'A')), std::nullopt);
}

// A sequence cut short is one replacement; the byte that broke it stays.
TEST(CodeSigningTextTest, TeamIdentifierBytesThatAreNotUtf8AreReplaced) {
  EXPECT_EQ(CodeSigningText::teamIdentifier(teamBuffer("AB\xFF" "C")), "AB\uFFFD" "C");
  EXPECT_EQ(CodeSigningText::teamIdentifier(teamBuffer("\xE2\x82" "C")), "\uFFFD" "C");
  EXPECT_EQ(CodeSigningText::teamIdentifier(teamBuffer("\u00c9quipe")), "\u00c9quipe");
  const auto repaired = [](std::string_view text) {
    return Utf8::repaired({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
  };
  EXPECT_EQ(repaired("\xC0\x80"), "\uFFFD\uFFFD");
  EXPECT_EQ(repaired("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(repaired("a\xF0\x9F\x8C\x99z"), "a\U0001F319z");
}

TEST(CodeSigningTextTest, AHashIsTwentyBytesInLowerCaseHexTwoDigitsAByte) {
  std::array<std::uint8_t, 20> hash{};
  for (std::size_t i = 0; i < hash.size(); ++i) hash[i] = static_cast<std::uint8_t>(i * 13);
  EXPECT_EQ(CodeSigningText::codeDirectoryHash(hash), "000d1a2734414e5b6875828f9ca9b6c3d0ddeaf7");
  EXPECT_EQ(CodeSigningText::codeDirectoryHash(std::span(hash).first(19)), std::nullopt);
}

}  // namespace
}  // namespace wakeloft
