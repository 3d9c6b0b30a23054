#include "ui/StringsFile.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "ui/StringsFileError.h"

namespace wakeloft {
namespace {

using Entries = std::vector<std::tuple<std::string, std::string, int>>;

Entries entries(std::string_view bytes) {
  Entries found;
  const auto file = StringsFile::parse(bytes);
  for (const auto& entry : file.entries()) found.emplace_back(entry.key, entry.value, entry.line);
  return found;
}

// The line a parse fails on, or 0 when it does not fail.
int failingLine(std::string_view bytes) {
  try {
    StringsFile::parse(bytes);
  } catch (const StringsFileError& error) {
    return error.line();
  }
  return 0;
}

TEST(StringsFileTest, ReadsEntriesInOrderWithTheirLinesAroundComments) {
  EXPECT_EQ(entries("\xEF\xBB\xBF/* header\n   spanning lines */\n"
                    "\"On\" = \"Ein\";  // trailing\n"
                    "\n"
                    "\"Off\"\t=\n\"Aus\" ;\n"),
            (Entries{{"On", "Ein", 3}, {"Off", "Aus", 5}}));
  EXPECT_TRUE(entries("  /* nothing */ // here\n").empty());
}

TEST(StringsFileTest, ReadsEscapesAndUtf8Exactly) {
  EXPECT_EQ(entries("\"a\\\"b\\\\c\" = \"1\\n2\\t3\\r\";\n"
                    "\"\\U00e9\\U2026\" = \"\\Ud83d\\Ude00\";\n"
                    "\"\xC2\xB7 %@\" = \"\xD9\x8A \xC2\xB7 %@\";\n"),
            (Entries{{"a\"b\\c", "1\n2\t3\r", 1},
                     {"\xC3\xA9\xE2\x80\xA6", "\xF0\x9F\x98\x80", 2},
                     {"\xC2\xB7 %@", "\xD9\x8A \xC2\xB7 %@", 3}}));
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

TEST(StringsFileTest, ARefusalSaysWhatIsWrong) {
  try {
    StringsFile::parse("\"a\" = \"b\";\n\"a\" = \"c\";");
    FAIL() << "a duplicate key was accepted";
  } catch (const StringsFileError& error) {
    EXPECT_STREQ(error.what(), "line 2: the key \"a\" appears twice");
  }
}

}  // namespace
}  // namespace wakeloft
