#include "ui/StringsFile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ui/StringsFileError.h"

namespace wakeloft {
namespace {

// The line a parse fails on, or 0 when it does not fail.
int failingLine(std::string_view bytes) {
  try {
    StringsFile::parse(bytes);
  } catch (const StringsFileError& error) {
    return error.line();
  }
  return 0;
}

// Loose forms, unfinished parts where they start, bad escapes, and bytes
// that are not UTF-8 text.
TEST(StringsFileTest, WhatIsNotATableIsRefusedWithItsLine) {
  const std::vector<std::pair<std::string_view, int>> cases = {
      {"\"a\" = \"b\";\n\"c\" = \"d\"\n", 2},   // no semicolon
      {"a = \"b\";", 1},                        // unquoted key
      {"\"a\" = b;", 1},                        // unquoted value
      {"\"a\" \"b\";", 1},                      // no "="
      {"\"\" = \"b\";", 1},                     // empty key
      {"\"a\" = \"b\";\n\n\"a\" = \"c\";", 3},  // same key twice
      {"\"a\" = \"b\";;", 1},                   // stray semicolon
      {"\"a\" = \"b\";\n/* open\n\n", 2},
      {"\n\"a\" = \"b;\n", 2},  // raw newline in quotes
      {"\"a\" = \"b\\", 1},
      {"\"a\" = \"\\x41\";", 1},
      {"\"a\" = \"\\U00g1\";", 1},
      {"\"a\" = \"\\Ude00\";", 1},         // lone low surrogate
      {"\"a\" = \"\\Ud83d\\U0041\";", 1},  // high with a non-surrogate
      {"\"a\" = \"\\U0000\";", 1},
      {"\"a\" = \"b\";\n\"c\" = \"\xC3\x28\";", 2},
      {std::string_view("\"a\" = \"b\";\n\"c\0\" = \"d\";", 22), 2},
      {"\"a\" = \"b\x01\";", 1},
  };
  for (const auto& [bytes, line] : cases) EXPECT_EQ(failingLine(bytes), line) << bytes;
}

}  // namespace
}  // namespace wakeloft
